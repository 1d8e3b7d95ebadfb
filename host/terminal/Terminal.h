// Terminal: the lines that a person reads and types. Where standard input or output is no terminal, what the
// program asks goes to standard error, so that standard output holds results alone. One thread.
#pragma once

#include <optional>

#include "platform/Text.h"

namespace Host {

using Platform::String;
using Platform::StringView;

class Terminal {
 public:
  // True if a person sits at both ends.
  bool Interactive() const;

  // What could steer the terminal or turn the writing direction is shown as an escape; line ends and tabs
  // stay.
  void Write(StringView text) const;

  // Shows the prompt and reads one line without its line end and without what keys such as the arrows send.
  // On a terminal the line can be edited, and the tab key completes a path. Nothing at the end of the input.
  // A line that isn't UTF-8 is refused with a text and asked for again.
  std::optional<String> ReadLine(StringView prompt) const;

  // The same without editing, and the terminal shows nothing of what is typed. Its echo is put back on every
  // way out. Asks again when the program was stopped at the prompt (Ctrl-Z) and came back. Where standard
  // input is no terminal the line is taken as it is.
  std::optional<String> ReadHidden(StringView prompt) const;
};

}  // namespace Host
