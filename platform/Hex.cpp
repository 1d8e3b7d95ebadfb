#include "platform/Hex.h"

namespace Platform {

String HexText(std::span<const std::uint8_t> bytes, HexCase letters) {
  const StringView digits = letters == HexCase::Upper ? u"0123456789ABCDEF" : u"0123456789abcdef";
  String text;
  for (const std::uint8_t byte : bytes) {
    text += digits[byte / 16];
    text += digits[byte % 16];
  }
  return text;
}

String HexText(char16_t code) {
  const std::uint8_t bytes[] = {static_cast<std::uint8_t>(code >> 8), static_cast<std::uint8_t>(code & 0xFF)};
  return HexText(bytes);
}

std::optional<std::vector<std::uint8_t>> ParseHex(StringView digits) {
  if (digits.size() % 2 != 0) return std::nullopt;
  std::vector<std::uint8_t> bytes;
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    const int high = HexDigit(digits[i]), low = HexDigit(digits[i + 1]);
    if (high < 0 || low < 0) return std::nullopt;
    bytes.push_back(static_cast<std::uint8_t>(high * 16 + low));
  }
  return bytes;
}

}  // namespace Platform
