#include "host/terminal/TypedText.h"

namespace Host {

namespace {

constexpr char16_t kEscape = 0x1B;

// The length of the escape sequence at the start of the text.
std::size_t SequenceLength(Platform::StringView text) {
  if (text.size() < 2) return 1;
  if (text[1] == u'O') return text.size() < 3 ? 2 : 3;
  if (text[1] != u'[') return 1;
  std::size_t length = 2;
  while (length < text.size() && text[length] >= 0x20 && text[length] < 0x40) ++length;
  const bool whole = length < text.size() && text[length] >= 0x40 && text[length] < 0x7F;
  return whole ? length + 1 : length;
}

}  // namespace

Platform::String WithoutEscapes(Platform::StringView typed) {
  Platform::String text;
  for (std::size_t i = 0; i < typed.size();) {
    const char16_t c = typed[i];
    if (c == kEscape) {
      i += SequenceLength(typed.substr(i));
      continue;
    }
    text += c;
    ++i;
  }
  return text;
}

}  // namespace Host
