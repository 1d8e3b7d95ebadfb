// CommandError: an error for the user or the mail server that called tvmail, with its exit code. Its text
// reads "what happened: what to do"; the program puts "tvmail: " in front.
#pragma once

#include <stdexcept>
#include <string>

#include "host/ExitCode.h"
#include "platform/TerminalText.h"

namespace Host {

class CommandError : public std::runtime_error {
 public:
  CommandError(ExitCode code, const std::string& text) : std::runtime_error(text), code_(code) {}
  CommandError(ExitCode code, Platform::StringView text) : CommandError(code, Platform::ToUtf8(text)) {}
  ExitCode Code() const { return code_; }

 private:
  ExitCode code_;
};

// The text of a command line argument, for everything that is stored, shown or sent. Raises a CommandError if
// it isn't UTF-8, or if it holds control characters, which could forge a header of a mail.
inline Platform::String ArgumentText(const std::string& argument) {
  if (!Platform::IsUtf8(argument))
    throw CommandError(WrongUse, "an argument isn't UTF-8: give it in the encoding of this terminal");
  Platform::String text = Platform::FromUtf8(argument);
  if (Platform::HasControl(text))
    throw CommandError(DataRefused, "\"" + Platform::TerminalLine(text) +
                                        "\" contains a line end or another control character: remove it");
  return text;
}

}  // namespace Host
