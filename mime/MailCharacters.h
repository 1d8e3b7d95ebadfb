// MailCharacters: classes of characters that mail programs insert or substitute.
//
// All functions are pure; any thread.
#pragma once

#include <algorithm>

#include "platform/Text.h"

namespace Mime {

using Platform::String;
using Platform::StringView;

constexpr bool IsOneOf(char16_t c, StringView characters) {
  return characters.find(c) != StringView::npos;
}

constexpr bool IsAscii(char16_t c) {
  return c < 0x80;
}

constexpr bool IsLineEnd(char16_t c) {
  return IsAscii(c) ? c >= u'\n' && c <= u'\r' : IsOneOf(c, u"\u0085\u2028\u2029");
}

// A blank of any width, or a tab. Not a line end.
constexpr bool IsBlank(char16_t c) {
  if (IsAscii(c)) return c == u' ' || c == u'\t';
  return (c >= u'\u2000' && c <= u'\u200A') || IsOneOf(c, u"\u00A0\u1680\u202F\u205F\u3000");
}

// A character without width: soft hyphens, zero-width characters, joiners, marks of the writing direction,
// variation selectors and the byte order mark.
constexpr bool IsInvisible(char16_t c) {
  if (IsAscii(c)) return false;
  return (c >= u'\u200B' && c <= u'\u200F') || (c >= u'\u202A' && c <= u'\u202E') ||
         (c >= u'\u2060' && c <= u'\u206F') || (c >= u'\uFE00' && c <= u'\uFE0F') ||
         IsOneOf(c, u"\u00AD\u034F\u061C\u180E\uFEFF");
}

// The hyphen and its substitutes: hyphens, dashes, the minus sign, the horizontal box drawing line, and their
// small and wide forms.
constexpr bool IsDash(char16_t c) {
  if (IsAscii(c)) return c == u'-';
  return (c >= u'\u2010' && c <= u'\u2015') || IsOneOf(c, u"\u2212\u2500\u2501\uFE58\uFE63\uFF0D");
}

// A sign in front of each quoted line.
constexpr bool IsQuoteSign(char16_t c) {
  return IsAscii(c) ? c == u'>' || c == u'|' : IsOneOf(c, u"\u00BB\u203A\u2502\u2503\uFF1E");
}

// True if the text has no visible character.
constexpr bool IsBlankText(StringView text) {
  return std::all_of(text.begin(), text.end(),
                     [](char16_t c) { return IsBlank(c) || IsLineEnd(c) || IsInvisible(c); });
}

}  // namespace Mime
