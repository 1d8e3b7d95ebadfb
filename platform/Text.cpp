#include "platform/Text.h"

#include <algorithm>

#include <locale.h>
#include <wctype.h>

#include <cstdint>

namespace Platform {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

char32_t FoldCode(char32_t code) {
  if (code < 0x80) return code >= 'A' && code <= 'Z' ? code + ('a' - 'A') : code;
  // The dotted capital I and the Kelvin sign would fold into plain letters, and one address could then pass
  // for another. Final sigma is the same letter as sigma.
  if (code == 0x130 || code == 0x212A) return code;
  if (code == 0x3C2) return 0x3C3;
  static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  return locale ? static_cast<char32_t>(towlower_l(static_cast<wint_t>(code), locale)) : code;
}

// The code point at position i, which is moved past it. A lone surrogate is a code point of its own.
char32_t NextCode(StringView text, std::size_t& i) {
  const bool pair = IsSurrogatePair(text, i);
  const char16_t c = text[i++];
  return pair ? JoinSurrogates(c, text[i++]) : c;
}

// The code point at bytes[i]; i is moved past it. A byte that begins no character gives kReplacement, moves i
// by one and clears good. A surrogate in three bytes is good.
char32_t NextUtf8(std::string_view bytes, std::size_t& i, bool& good) {
  const auto at = [&](std::size_t k) { return static_cast<std::uint8_t>(bytes[k]); };
  const std::uint8_t lead = at(i);
  if (lead < 0x80) return at(i++);
  const unsigned count = lead >= 0xF0 && lead <= 0xF4 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC2 ? 1 : 0;
  if (count != 0 && lead <= 0xF4 && i + count < bytes.size()) {
    char32_t code = lead & (0x3F >> count);
    unsigned read = 0;
    while (read < count && (at(i + 1 + read) & 0xC0) == 0x80) {
      code = (code << 6) | (at(i + 1 + read) & 0x3F);
      ++read;
    }
    const char32_t least = count == 1 ? 0x80 : count == 2 ? 0x800 : 0x10000;
    if (read == count && code >= least && code <= 0x10FFFF) {
      i += 1 + count;
      return code;
    }
  }
  good = false;
  ++i;
  return kReplacement;
}

}  // namespace

String Trim(StringView text) {
  const auto first = text.find_first_not_of(u' ');
  if (first == StringView::npos) return {};
  return String(text.substr(first, text.find_last_not_of(u' ') - first + 1));
}

// A block is compared without a branch, which lets the compiler compare many characters at once. It is short,
// since the position in the last one is found character by character.
std::size_t FindEither(StringView text, char16_t one, char16_t other, std::size_t begin) {
  const auto isEither = [=](char16_t c) { return (c == one) | (c == other); };
  const auto hasEither = [=](StringView block) {
    char16_t any = 0;
    for (const char16_t c : block) any = static_cast<char16_t>(any | isEither(c));
    return any != 0;
  };
  constexpr std::size_t kBlock = 24;
  while (begin + kBlock <= text.size() && !hasEither({text.data() + begin, kBlock})) begin += kBlock;
  while (begin < text.size() && !isEither(text[begin])) ++begin;
  return begin;
}

bool EqualsIgnoreCase(StringView left, StringView right) {
  if (left.size() != right.size()) return false;  // folding never leaves a plane, so it keeps lengths
  for (std::size_t i = 0, j = 0; i < left.size();) {
    if (left[i] == right[j] && !IsHighSurrogate(left[i])) {
      ++i;
      ++j;
    } else if (FoldCode(NextCode(left, i)) != FoldCode(NextCode(right, j)) || i != j) {
      return false;
    }
  }
  return true;
}

String FoldCase(StringView text) {
  String folded;
  folded.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) AppendCodePoint(folded, FoldCode(NextCode(text, i)));
  return folded;
}

std::string ToUtf8(StringView text) {
  std::string bytes;
  bytes.reserve(text.size() + text.size() / 2);
  for (std::size_t i = 0; i < text.size();) {
    const char32_t code = NextCode(text, i);
    if (code < 0x80) {
      bytes += static_cast<char>(code);
    } else if (code < 0x800) {
      bytes += static_cast<char>(0xC0 | (code >> 6));
      bytes += static_cast<char>(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
      bytes += static_cast<char>(0xE0 | (code >> 12));
      bytes += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
      bytes += static_cast<char>(0x80 | (code & 0x3F));
    } else {
      bytes += static_cast<char>(0xF0 | (code >> 18));
      bytes += static_cast<char>(0x80 | ((code >> 12) & 0x3F));
      bytes += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
      bytes += static_cast<char>(0x80 | (code & 0x3F));
    }
  }
  return bytes;
}

String FromUtf8(std::string_view bytes) {
  String text;
  text.reserve(bytes.size());
  bool good = true;
  for (std::size_t i = 0; i < bytes.size();) AppendCodePoint(text, NextUtf8(bytes, i, good));
  return text;
}

bool IsUtf8(std::string_view bytes) {
  bool good = true;
  for (std::size_t i = 0; i < bytes.size() && good;) NextUtf8(bytes, i, good);
  return good;
}

bool HasControl(StringView text) {
  return std::ranges::any_of(text, [](char16_t c) { return IsControl(c) || c == 0x2028 || c == 0x2029; });
}

void AppendCodePoint(String& text, char32_t code) {
  if (code < 0x10000) {
    text += static_cast<char16_t>(code);
  } else {
    text += static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10));
    text += static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
  }
}

}  // namespace Platform
