// CommandError: an error for the user or the mail server that called tvmail, with its exit code. Its text
// reads "what happened: what to do", in the user's language; the program puts "tvmail: " in front.
#pragma once

#include <stdexcept>
#include <string>

#include "host/ExitCode.h"
#include "platform/ReasonTexts.h"
#include "platform/TerminalText.h"
#include "runtime/Texts.h"

namespace Host {

class CommandError : public std::runtime_error {
 public:
  CommandError(ExitCode code, const std::string& text) : std::runtime_error(text), code_(code) {}
  CommandError(ExitCode code, Platform::StringView text) : CommandError(code, Platform::ToUtf8(text)) {}
  // The text of a number, with its arguments.
  CommandError(ExitCode code, std::int32_t text, Platform::StringView first = {},
               Platform::StringView second = {})
      : CommandError(code, Runtime::TextOf(text, first, second)) {}
  ExitCode Code() const { return code_; }

 private:
  ExitCode code_;
};

// The text of a command line argument, for everything that is stored, shown or sent. Raises a CommandError if
// it isn't UTF-8, or if it holds control characters, which could forge a header of a mail.
inline Platform::String ArgumentText(const std::string& argument) {
  if (!Platform::IsUtf8(argument)) throw CommandError(WrongUse, Platform::TextNumber::kArgumentNotUtf8);
  Platform::String text = Platform::FromUtf8(argument);
  if (Platform::HasControl(text))
    throw CommandError(DataRefused, Platform::TextNumber::kArgumentWithControl,
                       Platform::FromUtf8(Platform::TerminalLine(text)));
  return text;
}

}  // namespace Host
