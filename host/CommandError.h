// CommandError: an error for the person or the mail server that called tvmail, with the exit code that goes
// with it. Its text reads "what happened: what to do"; the program puts "tvmail: " in front.
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

// What a user gave on the command line, for all that is stored, shown or sent. Raises a CommandError for what
// isn't UTF-8, since it couldn't be shown or stored without losing something, and for control characters,
// which could forge a header of the mails that are sent with it.
inline Platform::String ArgumentText(const std::string& argument) {
  if (!Platform::IsUtf8(argument))
    throw CommandError(WrongUse, "an argument isn't UTF-8: give it in the encoding of this terminal");
  Platform::String text = Platform::FromUtf8(argument);
  if (Platform::HasControl(text))
    throw CommandError(DataRefused, "\"" + Platform::TerminalLine(text) +
                                        "\" holds a line end or another control character: leave it out");
  return text;
}

}  // namespace Host
