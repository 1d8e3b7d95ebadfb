#include "host/terminal/Terminal.h"

#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <iostream>
#include <optional>
#include <string>

#include "host/terminal/HeldSignals.h"
#include "host/terminal/LineEditor.h"
#include "host/terminal/TypedText.h"
#include "platform/ProgramTexts.h"
#include "platform/TerminalText.h"
#include "runtime/Texts.h"

namespace Host {

namespace {

namespace TextNumber = Platform::TextNumber;

// Switches the terminal's echo off. A signal that would end or stop the program takes effect once the echo is
// restored.
class WithoutEcho {
 public:
  WithoutEcho() {
    if (tcgetattr(STDIN_FILENO, &before_) != 0) return;
    signals_.emplace();
    termios silent = before_;
    silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    // Without NOFLSH, Ctrl-C could discard a line between poll and read; read would wait with all signals
    // held.
    silent.c_lflag |= ECHONL | NOFLSH;
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
  }
  ~WithoutEcho() {
    if (signals_) tcsetattr(STDIN_FILENO, TCSAFLUSH, &before_);
  }
  WithoutEcho(const WithoutEcho&) = delete;
  WithoutEcho& operator=(const WithoutEcho&) = delete;

  // Null if standard input is not a terminal.
  const HeldSignals* Signals() const { return signals_ ? &*signals_ : nullptr; }

 private:
  termios before_{};
  std::optional<HeldSignals> signals_;
};

// Reads byte by byte, so that bytes after the line remain for the next reader of standard input. Returns
// nothing when one of the signals, if given, arrives.
std::optional<std::string> ReadBytes(const HeldSignals* signals) {
  std::string line;
  char c = 0;
  for (;;) {
    pollfd input{STDIN_FILENO, POLLIN, 0};
    const bool ready = ppoll(&input, 1, nullptr, signals ? &signals->MaskOfWaiting() : nullptr) > 0;
    const ssize_t got = ready ? read(STDIN_FILENO, &c, 1) : -1;
    if (got < 0 && errno == EINTR && !(signals && signals->Arrived() != 0)) continue;
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
      return ReadBytes(silence.Signals());
    });
    // Ctrl-Z takes effect once the echo is restored; the question is asked again afterwards.
    if (!answer && silence.Signals() && silence.Signals()->Arrived() == SIGTSTP) continue;
    return answer && Interactive() ? WithoutEscapes(*answer) : answer;
  }
}

}  // namespace Host
