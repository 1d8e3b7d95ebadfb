#include "gateway/notices/ForeignText.h"

#include "platform/TerminalText.h"

namespace Gateway {

Platform::String ForeignText(std::string_view bytes) {
  constexpr std::size_t kLongest = 500;
  const Platform::String text = Platform::FromUtf8(bytes.substr(0, 8 * kLongest));
  Platform::String line;
  for (std::size_t i = 0; i < text.size() && line.size() < kLongest - 1; ++i) {
    const bool pair = Platform::IsSurrogatePair(text, i);
    const bool blank =
        !pair && (text[i] == u' ' || Platform::IsSurrogate(text[i]) || Platform::IsUnsafeOnTerminal(text[i]));
    if (!blank)
      line += text[i];
    else if (!line.empty() && line.back() != u' ')
      line += u' ';
    if (pair) line += text[++i];
  }
  return Platform::Trim(line);
}

}  // namespace Gateway
