#include "host/terminal/HelpText.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "mime/HtmlText.h"
#include "platform/TerminalText.h"

namespace Host {

namespace {

constexpr std::size_t kLargestPage = 1 << 20;  // in bytes; far above any page
constexpr std::size_t kWidest = 80;            // in columns; longer lines are hard to read
constexpr const char* kPagers = "if command -v less >/dev/null; then exec less; else exec more; fi";

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

// Signals for the pager, and SIGPIPE when it ends, don't end the program.
class SignalsIgnoredForPager {
 public:
  SignalsIgnoredForPager() {
    for (std::size_t i = 0; i < kSignals.size(); ++i) before_[i] = std::signal(kSignals[i], SIG_IGN);
  }
  SignalsIgnoredForPager(const SignalsIgnoredForPager&) = delete;
  SignalsIgnoredForPager& operator=(const SignalsIgnoredForPager&) = delete;
  ~SignalsIgnoredForPager() {
    for (std::size_t i = 0; i < kSignals.size(); ++i) std::signal(kSignals[i], before_[i]);
  }

 private:
  static constexpr std::array kSignals = {SIGINT, SIGQUIT, SIGPIPE};
  std::array<void (*)(int), kSignals.size()> before_{};
};

bool ShowInPager(const std::string& text) {
  const char* wanted = std::getenv("PAGER");
  setenv("LESS", "FRX", 0);  // a short page is left on the screen
  const SignalsIgnoredForPager signals;
  std::FILE* pager = popen(wanted && *wanted ? wanted : kPagers, "w");
  if (!pager) return false;
  std::fwrite(text.data(), 1, text.size(), pager);
  constexpr int kNotFound = 127;
  const int status = pclose(pager);
  return !(WIFEXITED(status) && WEXITSTATUS(status) == kNotFound);
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
  } else if (const String page = Wrapped(text, Columns()); !ShowInPager(Platform::TerminalText(page))) {
    terminal.Write(page);
  }
  return true;
}

}  // namespace Host
