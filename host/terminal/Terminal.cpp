#include "host/terminal/Terminal.h"

#include <poll.h>
#include <signal.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <iostream>
#include <string>

#include "platform/TerminalText.h"

namespace Host {

namespace {

volatile sig_atomic_t arrivedSignal = 0;

// Switches the terminal's echo off. A signal that would end or stop the program waits until the echo is back,
// so that nobody is left with a dumb terminal; it is seen while the program waits for input, and only then.
class WithoutEcho {
 public:
  WithoutEcho() {
    arrivedSignal = 0;
    sigprocmask(SIG_BLOCK, nullptr, &mask_);
    if (tcgetattr(STDIN_FILENO, &before_) != 0) return;
    sigset_t blocked;
    sigemptyset(&blocked);
    for (const int signal : kSignals) sigaddset(&blocked, signal);
    sigprocmask(SIG_BLOCK, &blocked, nullptr);
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
    sigprocmask(SIG_SETMASK, &mask_, nullptr);
    const int signal = arrivedSignal;
    arrivedSignal = 0;
    if (signal != 0) raise(signal);
  }

  // The signals that are blocked while the program waits.
  const sigset_t& MaskOfWaiting() const { return mask_; }

  WithoutEcho(const WithoutEcho&) = delete;
  WithoutEcho& operator=(const WithoutEcho&) = delete;

 private:
  static constexpr std::array kSignals = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP};
  sigset_t mask_{};
  termios before_{};
  std::array<struct sigaction, kSignals.size()> actions_{};
  bool on_ = false;
};

// Byte by byte, so that nothing behind the line is taken from whoever reads standard input next. While it
// waits the mask is in force, if there is one.
std::optional<std::string> ReadBytes(const sigset_t* mask) {
  std::string line;
  char c = 0;
  for (;;) {
    pollfd input{STDIN_FILENO, POLLIN, 0};
    const bool ready = ppoll(&input, 1, nullptr, mask) > 0;
    const ssize_t got = ready ? read(STDIN_FILENO, &c, 1) : -1;
    if (got < 0 && errno == EINTR && arrivedSignal == 0) continue;
    if (got <= 0) return got == 0 && !line.empty() ? std::optional(line) : std::nullopt;
    if (c == '\n') break;
    line += c;
  }
  if (line.ends_with('\r')) line.pop_back();
  return line;
}

std::optional<String> AskLine(const Terminal& terminal, StringView prompt, const sigset_t* mask) {
  for (;;) {
    terminal.Write(prompt);
    const auto line = ReadBytes(mask);
    if (!line) return std::nullopt;
    if (Platform::IsUtf8(*line)) return Platform::FromUtf8(*line);
    terminal.Write(u"That isn't UTF-8. Please type it again.\n");
  }
}

}  // namespace

bool Terminal::Interactive() const {
  return isatty(STDIN_FILENO) == 1 && isatty(STDOUT_FILENO) == 1;
}

void Terminal::Write(StringView text) const {
  (Interactive() ? std::cout : std::cerr) << Platform::TerminalText(text) << std::flush;
}

std::optional<String> Terminal::ReadLine(StringView prompt) const {
  return AskLine(*this, prompt, nullptr);
}

std::optional<String> Terminal::ReadHidden(StringView prompt) const {
  for (;;) {
    const WithoutEcho silence;
    const auto answer = AskLine(*this, prompt, &silence.MaskOfWaiting());
    // Ctrl-Z takes effect at the end of the silence; whoever comes back from it is asked anew.
    if (answer || arrivedSignal != SIGTSTP) return answer;
  }
}

}  // namespace Host
