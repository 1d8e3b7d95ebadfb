#include "host/terminal/HelpText.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>

#include "host/terminal/Pager.h"
#include "mime/HtmlText.h"
#include "platform/TerminalText.h"

namespace Host {

namespace {

constexpr std::size_t kLargestPage = 1 << 20;  // in bytes; far above any page
constexpr std::size_t kWidest = 80;            // in columns; longer lines are hard to read

bool IsWide(char16_t c) {
  return (c >= 0x1100 && c < 0x1160) || (c >= 0x2E80 && c < 0xD800) || (c >= 0xF900 && c < 0xFB00) ||
         (c >= 0xFF00 && c < 0xFF61);
}

std::size_t Columns() {
  winsize size{};
  const bool known = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
  return known ? std::min<std::size_t>(size.ws_col, kWidest) : kWidest;
}

// The length of the part of the line that fits.
std::size_t FittingLength(StringView line, std::size_t columns) {
  std::size_t used = 0, breakAt = 0;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == u' ') breakAt = i;
    used += IsWide(line[i]) ? 2U : 1U;
    if (used > columns) return breakAt > 0 ? breakAt : std::max<std::size_t>(i, 1);
    if (IsWide(line[i])) breakAt = i + 1;
  }
  return line.size();
}

}  // namespace

String Wrapped(StringView text, std::size_t columns) {
  String wrapped;
  while (!text.empty()) {
    StringView line = text.substr(0, text.find(u'\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    do {
      const std::size_t length = FittingLength(line, columns);
      wrapped.append(line.substr(0, length)) += u'\n';
      line.remove_prefix(length);
      line.remove_prefix(std::min(line.find_first_not_of(u' '), line.size()));
    } while (!line.empty());
  }
  return wrapped;
}

bool ShowHelpText(const Terminal& terminal, const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  std::string bytes(kLargestPage, '\0');
  in.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!in.is_open() || in.bad()) return false;
  bytes.resize(static_cast<std::size_t>(in.gcount()));
  const String text = Mime::HtmlToText(Platform::FromUtf8(bytes)) + u"\n";
  if (!terminal.Interactive()) {
    terminal.Write(text);
  } else {
    const std::string page = Platform::TerminalText(Wrapped(text, Columns()));
    ShowPaged(terminal, [&](const PageWriter& write) { write(page); });
  }
  return true;
}

}  // namespace Host
