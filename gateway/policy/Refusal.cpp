#include "gateway/policy/Refusal.h"

#include "runtime/Texts.h"

namespace Gateway {
namespace {

constexpr std::size_t kLongestArgument = 254;  // an address

String Shortened(StringView argument) {
  if (argument.size() <= kLongestArgument) return String(argument);
  return String(argument.substr(0, kLongestArgument)) + u"...";
}

}  // namespace

String Refusal::In(StringView language) const {
  return Runtime::TextIn(language, Text, FirstText == 0 ? First : Runtime::TextIn(language, FirstText, First),
                         Second);
}

Refusal MakeRefusal(std::string_view rule, std::int32_t text, StringView first, StringView second) {
  return {rule, text, Shortened(first), Shortened(second), 0};
}

}  // namespace Gateway
