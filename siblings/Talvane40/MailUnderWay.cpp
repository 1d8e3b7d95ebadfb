#include "siblings/Talvane40/MailUnderWay.h"

#include <algorithm>

#include "platform/Hex.h"

namespace Talvane40 {

std::string VettedKey(const Value& value) {
  const String key = value.ToString();
  if (key.empty() || key.size() > Platform::MailIntake::kLongestKey ||
      !std::ranges::all_of(key, [](char16_t c) { return HexDigit(c) >= 0; }))
    throw Failure(FailureNumber::RefusedInput, u"Talvane40",
                  u"The key of a mail must be 1 to 64 hexadecimal digits.");
  return ToUtf8(FoldCase(key));
}

std::optional<MailUnderWay>& MailOfThisThread() {
  thread_local std::optional<MailUnderWay> mail;
  return mail;
}

}  // namespace Talvane40
