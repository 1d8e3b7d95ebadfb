#include "platform/Guid.h"

#include <algorithm>

#include "platform/Failure.h"
#include "platform/Hex.h"

namespace Platform {
namespace {

constexpr StringView kPattern = u"{00000000-0000-0000-0000-000000000000}";

}  // namespace

String ToText(const Guid& identity) {
  const String digits = HexText(identity.Bytes);
  String text(kPattern);
  std::size_t next = 0;
  for (char16_t& c : text) {
    if (c == u'0') c = digits[next++];
  }
  return text;
}

Guid ParseGuid(StringView text) {
  if (text.size() != kPattern.size()) Raise(FailureNumber::TypeMismatch, text.substr(0, 80));
  String digits;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (kPattern[i] == u'0')
      digits += text[i];
    else if (text[i] != kPattern[i])
      Raise(FailureNumber::TypeMismatch, text);
  }
  const auto bytes = ParseHex(digits);
  if (!bytes) Raise(FailureNumber::TypeMismatch, text);
  Guid identity;
  std::copy(bytes->begin(), bytes->end(), identity.Bytes.begin());
  return identity;
}

}  // namespace Platform
