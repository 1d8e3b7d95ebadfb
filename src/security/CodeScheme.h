// CodeScheme: the layout and the arithmetic that both reversible encoders share.
//
// An encoded string is a start character, a length character, leading filler, the body and trailing filler.
// The start character is the table's at the start position S; S mod 8 tells the count of leading fillers, and
// each body character is shifted by a table character whose place depends on S and on its own position.
// Positions count from 1. Pure; any thread. Raises 5 for a position outside a string and for a character
// without a single-byte code, 6 for a code or position beyond 16 bits.
#pragma once

#include <cstdint>

#include "platform/Text.h"

namespace TvEmailServices {

using namespace Platform;

// The single-byte code of the character at a position.
std::int16_t CodeAt(StringView text, std::int32_t position);

// Puts one code in the place of another throughout the text, from the first position on.
void Substitute(String& text, char16_t code, char16_t by);

// How many filler characters stand in front of the body, and how many fill the string up behind it.
std::int32_t LeadingFillers(std::int32_t start);
std::int32_t TrailingFillers(std::int32_t start, std::size_t length);

struct CodeScheme {
  std::int16_t Modulus;  // the count of codes
  std::int16_t Offset;   // added to every encoded code
  std::int16_t Lowest;   // the lowest code of a decoded character

  // The start character and the length character.
  String Begin(StringView table, std::int32_t start, std::size_t length) const;

  // The body, behind what the output holds so far.
  void AppendBody(String& output, StringView table, std::int32_t start, StringView text) const;

  // The text that an encoded string carries, its substitutions undone before. Raises 5 where the string or
  // the table ends too early.
  String Read(StringView encoded, StringView table) const;

 private:
  char16_t Shift(std::int16_t code, std::int32_t by) const;
  std::int16_t Unshift(std::int16_t code, std::int16_t by) const;
};

}  // namespace TvEmailServices
