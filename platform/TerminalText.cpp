#include "platform/TerminalText.h"

#include "platform/Hex.h"

namespace Platform {

namespace {

// Controls, marks that turn the writing direction, and characters that nobody sees.
bool IsDangerous(char16_t c) {
  return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0x061C || (c >= 0x200B && c <= 0x200F) ||
         (c >= 0x2028 && c <= 0x202E) || (c >= 0x2060 && c <= 0x206F) || c == 0xFEFF;
}

bool IsPair(StringView text) {
  return text.size() > 1 && text[0] >= 0xD800 && text[0] < 0xDC00 && text[1] >= 0xDC00 && text[1] < 0xE000;
}

void AppendVisibly(String& visible, char16_t c) {
  if (!IsDangerous(c) && (c < 0xD800 || c >= 0xE000)) {
    visible += c;
    return;
  }
  visible += u"\\u" + HexText(c);
}

}  // namespace

std::string TerminalText(StringView text) {
  String visible;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (IsPair(text.substr(i))) {
      visible += text.substr(i++, 2);
    } else if (text[i] == u'\r') {
      if (i + 1 == text.size() || text[i + 1] != u'\n') visible += u'\n';
    } else if (text[i] == u'\n' || text[i] == u'\t') {
      visible += text[i];
    } else {
      AppendVisibly(visible, text[i]);
    }
  }
  return ToUtf8(visible);
}

std::string TerminalText(const std::string& utf8) {
  return TerminalText(FromUtf8(utf8));
}

std::string TerminalLine(StringView text) {
  String visible;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (IsPair(text.substr(i))) {
      visible += text.substr(i++, 2);
    } else if (text[i] == u'\r' || text[i] == u'\n' || text[i] == u'\t') {
      if (!visible.ends_with(u' ')) visible += u' ';
    } else {
      AppendVisibly(visible, text[i]);
    }
  }
  return ToUtf8(visible);
}

}  // namespace Platform
