// Guid: the 16-byte identifier of a library, a class or an interface.
#pragma once

#include <array>
#include <compare>
#include <cstdint>

#include "platform/Hex.h"
#include "platform/Text.h"

namespace Platform {

struct Guid {
  std::array<std::uint8_t, 16> Bytes{};
  friend constexpr auto operator<=>(const Guid&, const Guid&) = default;
};

// "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}": the bytes in their order, in upper-case hexadecimal.
String ToText(const Guid& id);

// The identifier of such a text, letters in any case. Raises 13 for any other text.
Guid ParseGuid(StringView text);

// The same for a constant. Another text doesn't compile.
consteval Guid operator""_guid(const char* text, std::size_t length) {
  Guid id;
  std::size_t digits = 0;
  for (std::size_t i = 0; i < length; ++i) {
    const char c = text[i];
    if (c == '{' || c == '}' || c == '-') continue;
    const int digit = HexDigit(static_cast<unsigned char>(c));
    if (digit < 0) throw "not hexadecimal";
    id.Bytes.at(digits / 2) = static_cast<std::uint8_t>(id.Bytes[digits / 2] * 16 + digit);
    ++digits;
  }
  if (digits != 32) throw "an identifier has 32 digits";
  return id;
}

}  // namespace Platform
