// Text: the strings of the whole system, and their conversion from and to UTF-8.
//
// A string is a sequence of UTF-16 code units. A character is one code unit, here and in all other headers.
// All functions are pure, raise no failure and may be called on any thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Platform {

using String = std::u16string;
using StringView = std::u16string_view;

// The text without space characters at both ends. Tabs and line ends stay.
String Trim(StringView text);

// The first position of one of two characters, from begin on; the size of the text if neither is found.
// Several times as fast as find_first_of.
std::size_t FindEither(StringView text, char16_t one, char16_t other, std::size_t begin = 0);

// True if both texts are equal but for the case of letters, of any script. One character is compared with one
// character, independently of the process locale.
bool EqualsIgnoreCase(StringView left, StringView right);

// The text with each character folded as EqualsIgnoreCase does it: for an index of texts.
String FoldCase(StringView text);

// UTF-16 to UTF-8. A lone surrogate becomes its three bytes, so that FromUtf8 gives the same text back.
std::string ToUtf8(StringView text);

// UTF-8 to UTF-16. Three bytes of a lone surrogate give that surrogate back. Each byte that belongs to no
// character becomes U+FFFD.
String FromUtf8(std::string_view bytes);

// True if each byte belongs to a character, or to the three bytes of a lone surrogate.
bool IsUtf8(std::string_view bytes);

constexpr bool IsHighSurrogate(char16_t c) {
  return c >= 0xD800 && c < 0xDC00;
}
constexpr bool IsLowSurrogate(char16_t c) {
  return c >= 0xDC00 && c < 0xE000;
}
constexpr bool IsSurrogate(char16_t c) {
  return IsHighSurrogate(c) || IsLowSurrogate(c);
}
// True if a high surrogate is at the position, and a low one after it.
constexpr bool IsSurrogatePair(StringView text, std::size_t position) {
  return position + 1 < text.size() && IsHighSurrogate(text[position]) && IsLowSurrogate(text[position + 1]);
}

// The code point of a high and a low surrogate.
constexpr char32_t JoinSurrogates(char16_t high, char16_t low) {
  return 0x10000 + ((static_cast<char32_t>(high) - 0xD800) << 10) + (low - 0xDC00);
}

// Appends a code point up to 0x10FFFF, a surrogate as it is.
void AppendCodePoint(String& text, char32_t code);

// The control characters of ISO 646 and ISO 6429 (C0, DEL and C1), line ends and tabs among them.
constexpr bool IsControl(char16_t c) {
  return c < 0x20 || (c >= 0x7F && c < 0xA0);
}

// True if the text holds a control character, or a line or paragraph separator. Such a text is refused as a
// name, a host or an address: in a mail it could end its header line and begin another one.
bool HasControl(StringView text);

}  // namespace Platform
