// Refusal: why a mail isn't handed over to the component.
#pragma once

#include <cstdint>
#include <string_view>

#include "platform/Text.h"

namespace Gateway {

using Platform::String;
using Platform::StringView;

// The names of the rules, for logs. They are the same in every language.
namespace Rule {
inline constexpr std::string_view kStrangers = "strangers";
inline constexpr std::string_view kAutomatic = "automatic";
inline constexpr std::string_view kAuthentication = "authentication";
inline constexpr std::string_view kSize = "size";
inline constexpr std::string_view kEmpty = "empty";
}  // namespace Rule

struct Refusal {
  std::string_view Rule;  // one of the names above
  String Reason;          // for the mail's sender, in the user's language: what happened and what to do
};

// A refusal with the text of a number of Platform::TextNumber and its arguments, of which more than 254
// characters are cut off: they come from the mail. Raises nothing.
Refusal MakeRefusal(std::string_view rule, std::int32_t text, StringView first = {}, StringView second = {});

}  // namespace Gateway
