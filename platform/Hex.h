// Hex: bytes and 16-bit codes as hexadecimal digits. Pure; any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "platform/Text.h"

namespace Platform {

enum class HexCase { Upper, Lower };

// Two digits for each byte, in the order of the bytes.
String HexText(std::span<const std::uint8_t> bytes, HexCase letters = HexCase::Upper);

// Four digits.
String HexText(char16_t code);

// The bytes of such digits, letters in any case; nullopt if their number is odd or one is no digit.
std::optional<std::vector<std::uint8_t>> ParseHex(StringView digits);

// The value of one digit, letters in any case; -1 if it is none.
constexpr int HexDigit(char16_t c) {
  return c >= u'0' && c <= u'9'   ? c - u'0'
         : c >= u'A' && c <= u'F' ? c - u'A' + 10
         : c >= u'a' && c <= u'f' ? c - u'a' + 10
                                  : -1;
}

}  // namespace Platform
