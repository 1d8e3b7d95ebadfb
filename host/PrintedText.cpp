#include "host/PrintedText.h"

namespace Host {

std::string Printed(Platform::StringView text) {
  Platform::String safe;
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

}  // namespace Host
