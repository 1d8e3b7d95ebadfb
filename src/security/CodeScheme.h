// CodeScheme: the layout and the arithmetic of both reversible encoders.
//
// An encoded string is a start character, a length character, leading filler, the body and trailing filler.
// The start character is the table's at the start position S. There are S mod 8 leading filler characters.
// Each body character is shifted by a character of the table, which depends on S and on the position in the
// string. Positions count from 1. Pure; any thread. Raises 5 for a position outside a string and for a
// character without a single-byte code, 6 for a code or position beyond 16 bits.
#pragma once

#include <cstdint>

#include "platform/Text.h"

namespace TvEmailServices {

using namespace Platform;

// The single-byte code of the character at a position.
std::int16_t CodeAt(StringView text, std::int32_t position);

// Replaces each occurrence of a code by another one.
void Substitute(String& text, char16_t code, char16_t by);

// The number of filler characters before the body, and after it (0 or less: none).
std::int32_t LeadingFillers(std::int32_t start);
std::int32_t TrailingFillers(std::int32_t start, std::size_t length);

struct CodeScheme {
  std::int16_t Modulus;  // the count of codes
  std::int16_t Offset;   // added to every encoded code
  std::int16_t Lowest;   // the lowest code of a decoded character

  // The start character and the length character.
  String Begin(StringView table, std::int32_t start, std::size_t length) const;

  // Appends the encoded body.
  void AppendBody(String& output, StringView table, std::int32_t start, StringView text) const;

  // The decoded text of a string whose substitutions have been undone. Raises 5 if the string or the table
  // ends too early.
  String Read(StringView encoded, StringView table) const;

 private:
  char16_t Shift(std::int16_t code, std::int32_t by) const;
  std::int16_t Unshift(std::int16_t code, std::int16_t by) const;
};

}  // namespace TvEmailServices
