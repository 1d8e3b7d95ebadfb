#include "host/terminal/Terminal.h"

#include <signal.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <iostream>
#include <string>

namespace Host {

namespace {

volatile sig_atomic_t arrivedSignal = 0;

// Switches the terminal's echo off. A signal that would end or stop the program waits until the echo is back,
// so that nobody is left with a dumb terminal.
class WithoutEcho {
 public:
  WithoutEcho() {
    if (tcgetattr(STDIN_FILENO, &before_) != 0) return;
    arrivedSignal = 0;
    struct sigaction remember {};
    remember.sa_handler = [](int signal) { arrivedSignal = signal; };
    for (std::size_t i = 0; i < kSignals.size(); ++i) sigaction(kSignals[i], &remember, &actions_[i]);
    termios silent = before_;
    silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    silent.c_lflag |= ECHONL;
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
    on_ = true;
  }
  ~WithoutEcho() {
    if (!on_) return;
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &before_);
    for (std::size_t i = 0; i < kSignals.size(); ++i) sigaction(kSignals[i], &actions_[i], nullptr);
    if (arrivedSignal != 0) raise(arrivedSignal);
  }
  WithoutEcho(const WithoutEcho&) = delete;
  WithoutEcho& operator=(const WithoutEcho&) = delete;

 private:
  static constexpr std::array kSignals = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP};
  termios before_{};
  std::array<struct sigaction, kSignals.size()> actions_{};
  bool on_ = false;
};

// Byte by byte, so that nothing behind the line is taken from whoever reads standard input next.
std::optional<std::string> ReadBytes() {
  std::string line;
  char c = 0;
  for (;;) {
    const ssize_t got = read(STDIN_FILENO, &c, 1);
    if (got < 0 && errno == EINTR && arrivedSignal == 0) continue;
    if (got <= 0) return got == 0 && !line.empty() ? std::optional(line) : std::nullopt;
    if (c == '\n') break;
    line += c;
  }
  if (line.ends_with('\r')) line.pop_back();
  return line;
}

}  // namespace

bool Terminal::Interactive() const {
  return isatty(STDIN_FILENO) == 1 && isatty(STDOUT_FILENO) == 1;
}

void Terminal::Write(StringView text) const {
  (Interactive() ? std::cout : std::cerr) << Platform::ToUtf8(text) << std::flush;
}

std::optional<String> Terminal::ReadLine(StringView prompt) const {
  for (;;) {
    Write(prompt);
    const auto line = ReadBytes();
    if (!line) return std::nullopt;
    if (Platform::IsUtf8(*line)) return Platform::FromUtf8(*line);
    Write(u"That isn't UTF-8. Please type it again.\n");
  }
}

std::optional<String> Terminal::ReadHidden(StringView prompt) const {
  const WithoutEcho silence;
  return ReadLine(prompt);
}

}  // namespace Host
