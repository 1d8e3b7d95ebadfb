#include "platform/Guid.h"

#include "platform/Failure.h"

namespace Platform {
namespace {

constexpr StringView kPattern = u"{00000000-0000-0000-0000-000000000000}";

int DigitOf(char16_t c) {
  if (c >= u'0' && c <= u'9') return c - u'0';
  if (c >= u'A' && c <= u'F') return c - u'A' + 10;
  if (c >= u'a' && c <= u'f') return c - u'a' + 10;
  return -1;
}

}  // namespace

String ToText(const Guid& identity) {
  String text(kPattern);
  std::size_t digits = 0;
  for (char16_t& c : text) {
    if (c != u'0') continue;
    const int byte = identity.Bytes[digits / 2];
    c = u"0123456789ABCDEF"[digits % 2 == 0 ? byte / 16 : byte % 16];
    ++digits;
  }
  return text;
}

Guid ParseGuid(StringView text) {
  if (text.size() != kPattern.size()) Raise(FailureNumber::TypeMismatch, text.substr(0, 80));
  Guid identity;
  std::size_t digits = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const int digit = DigitOf(text[i]);
    if (kPattern[i] == u'0' ? digit < 0 : text[i] != kPattern[i]) Raise(FailureNumber::TypeMismatch, text);
    if (kPattern[i] != u'0') continue;
    auto& byte = identity.Bytes[digits++ / 2];
    byte = static_cast<std::uint8_t>(byte * 16 + digit);
  }
  return identity;
}

}  // namespace Platform
