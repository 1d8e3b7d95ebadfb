#include "host/terminal/Terminal.h"

#include <poll.h>
#include <signal.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <iostream>
#include <string>

#include "host/terminal/LineEditor.h"
#include "host/terminal/TypedText.h"
#include "platform/StoredNames.h"
#include "platform/TerminalText.h"
#include "runtime/Texts.h"

namespace Host {

namespace {

namespace TextNumber = Platform::TextNumber;

volatile sig_atomic_t arrivedSignal = 0;

// Switches the terminal's echo off. Signals that would end or stop the program are blocked while it is off,
// except while the program waits for input, and so the echo is always restored.
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

  // The signal mask while the program waits.
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

// Reads byte by byte, so that bytes after the line remain for the next reader of standard input. Uses the
// mask, if given, while it waits.
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

// Shows the prompt. The line editor gets only its last line.
std::optional<std::string> ReadVisible(const Terminal& terminal, StringView prompt) {
  if (!CanEditLine()) {
    terminal.Write(prompt);
    return ReadBytes(nullptr);
  }
  const std::size_t lastLine = prompt.rfind(u'\n') + 1;
  terminal.Write(prompt.substr(0, lastLine));
  return ReadEditedLine(Platform::TerminalText(prompt.substr(lastLine)));
}

// Asks until the answer is valid UTF-8.
template <class Read>
std::optional<String> Ask(const Terminal& terminal, Read read) {
  for (;;) {
    const auto line = read();
    if (!line) return std::nullopt;
    if (Platform::IsUtf8(*line)) return Platform::FromUtf8(*line);
    terminal.Write(Runtime::TextOf(TextNumber::kNotUtf8) + u"\n");
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
  const auto line = Ask(*this, [&] { return ReadVisible(*this, prompt); });
  return line ? std::optional(WithoutEscapes(*line)) : std::nullopt;
}

std::optional<String> Terminal::ReadHidden(StringView prompt) const {
  for (;;) {
    const WithoutEcho silence;
    const auto answer = Ask(*this, [&] {
      Write(prompt);
      return ReadBytes(&silence.MaskOfWaiting());
    });
    // Ctrl-Z takes effect once the echo is restored; the question is asked again afterwards.
    if (!answer && arrivedSignal == SIGTSTP) continue;
    return answer && Interactive() ? WithoutEscapes(*answer) : answer;
  }
}

}  // namespace Host
