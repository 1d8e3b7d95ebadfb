// Terminal: writes and reads lines for a user. If standard input or output is no terminal, prompts go to
// standard error, so that standard output contains only results. One thread.
#pragma once

#include <optional>

#include "platform/Text.h"

namespace Host {

using Platform::String;
using Platform::StringView;

class Terminal {
 public:
  // True if standard input and output are a terminal.
  bool Interactive() const;

  // Characters that could control the terminal or change the writing direction are shown as escapes; line
  // ends and tabs are kept.
  void Write(StringView text) const;

  // Shows the prompt and returns one line, without its line end and the escape sequences of keys. On a
  // terminal the line can be edited, and the tab key completes a path. Returns nothing at the end of the
  // input. After a line that isn't UTF-8 it shows an error and asks again.
  std::optional<String> ReadLine(StringView prompt) const;

  // The same without editing and without echo. The echo is restored in every case. Asks again after the
  // program was stopped at the prompt (Ctrl-Z) and continued. If standard input is no terminal, the line is
  // returned unchanged.
  std::optional<String> ReadHidden(StringView prompt) const;
};

}  // namespace Host
