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
  std::string_view Rule;  // the name of a rule, which lasts as long as the process
  std::int32_t Text = 0;  // the number of its text in Platform::TextNumber, and that text's arguments
  String First = {}, Second = {};
  std::int32_t FirstText = 0;  // if set, the number of a text that is the first argument; First is its own

  // For the mail's sender: what happened and what to do. In the language of a code such as "de", or in that
  // of the program's user if it is empty. Raises nothing. Any thread.
  String In(StringView language = {}) const;
};

// A refusal whose arguments come from the mail: more than 254 characters of them are cut off. Raises nothing
// but std::bad_alloc.
Refusal MakeRefusal(std::string_view rule, std::int32_t text, StringView first = {}, StringView second = {});

}  // namespace Gateway
