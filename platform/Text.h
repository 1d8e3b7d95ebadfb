// Text: the strings of the whole system, and the one road between them and UTF-8.
//
// A string is a sequence of UTF-16 code units, and a code unit is what everything here calls a character.
// All functions are pure and may be called on any thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Platform {

using String = std::u16string;
using StringView = std::u16string_view;

// The text without space characters at either end. Tabs and line ends are no blanks and stay.
String Trim(StringView text);

// The whole of both texts compared, letters of any script without regard to case. One character is compared
// with one character, and the process locale plays no part.
bool EqualsIgnoreCase(StringView left, StringView right);

// One character folded as EqualsIgnoreCase folds it, for those who keep an index of folded texts.
String FoldCase(StringView text);

// UTF-16 to UTF-8. A lone surrogate becomes its three bytes, so that FromUtf8 gives the same text back.
std::string ToUtf8(StringView text);

// UTF-8 to UTF-16. Three bytes of a lone surrogate give that surrogate back; each byte that belongs to no
// character gives U+FFFD, so that damage shows and nothing around it is lost.
String FromUtf8(std::string_view bytes);

// True if FromUtf8 would find no stray byte.
bool IsUtf8(std::string_view bytes);

// The control characters of ISO 646 and ISO 6429 (C0, DEL and C1): line ends, tabs, and all that steers a
// terminal.
constexpr bool IsControl(char16_t c) {
  return c < 0x20 || (c >= 0x7F && c < 0xA0);
}

// True for a text that can't be a name, a host or an address: it holds a control character, or a line or
// paragraph separator. Such a text could end its header line in a mail, and begin another.
bool HasControl(StringView text);

}  // namespace Platform
