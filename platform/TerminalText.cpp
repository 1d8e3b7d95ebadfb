#include "platform/TerminalText.h"

#include <cstdio>

namespace Platform {

namespace {

bool IsDangerous(char16_t c) {
  return c < 0x20 || (c >= 0x7F && c < 0xA0) || (c >= 0x200B && c <= 0x200F) ||
         (c >= 0x2028 && c <= 0x202E) || (c >= 0x2060 && c <= 0x206F) || c == 0xFEFF;
}

}  // namespace

std::string TerminalText(StringView text) {
  String safe;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t c = text[i];
    if (c == u'\r') {
      if (i + 1 == text.size() || text[i + 1] != u'\n') safe += u'\n';
    } else if (c == u'\n' || c == u'\t' || (c >= 0x20 && c < 0x7F) || c >= 0xA0) {
      safe += c;
    } else {
      safe += u'\xFFFD';
    }
  }
  return Platform::ToUtf8(safe);
}

std::string TerminalText(const std::string& utf8) {
  return TerminalText(Platform::FromUtf8(utf8));
}

std::string TerminalLine(StringView text) {
  String visible;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t c = text[i];
    const bool high = c >= 0xD800 && c < 0xDC00;
    const bool pair = high && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000;
    if (pair) {
      visible += text.substr(i++, 2);
    } else if (c == u'\r' || c == u'\n' || c == u'\t') {
      if (!visible.ends_with(u' ')) visible += u' ';
    } else if (IsDangerous(c) || (c >= 0xD800 && c < 0xE000)) {
      char escaped[8];
      std::snprintf(escaped, sizeof escaped, "\\u%04X", static_cast<unsigned>(c));
      visible += Platform::FromUtf8(escaped);
    } else {
      visible += c;
    }
  }
  return Platform::ToUtf8(visible);
}

}  // namespace Platform
