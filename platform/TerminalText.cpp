#include "platform/TerminalText.h"

#include "platform/Hex.h"

namespace Platform {

namespace {

void AppendVisibly(String& visible, char16_t c) {
  if (IsUnsafeOnTerminal(c) || IsSurrogate(c)) {
    visible += u"\\u" + HexText(c);
  } else {
    visible += c;
  }
}

}  // namespace

bool IsUnsafeOnTerminal(char16_t c) {
  return IsControl(c) || c == 0x061C || (c >= 0x200B && c <= 0x200F) || (c >= 0x2028 && c <= 0x202E) ||
         (c >= 0x2060 && c <= 0x206F) || c == 0xFEFF;
}

std::string TerminalText(StringView text) {
  String visible;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (IsSurrogatePair(text, i)) {
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
    if (IsSurrogatePair(text, i)) {
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
