// TerminalText: texts that came from outside, made safe for a person's terminal.
#pragma once

#include <string>

#include "platform/Text.h"

namespace Platform {

// The text in UTF-8. Control characters, with which a stranger's mail could steer the terminal, lone surrogates,
// marks that turn the writing direction and other invisible characters are written as \uXXXX. Tabs and line
// ends stay, and CR LF or CR alone becomes LF.
std::string TerminalText(StringView text);
std::string TerminalText(const std::string& utf8);

// The same on one line: line ends and tabs become blanks.
std::string TerminalLine(StringView text);

}  // namespace Platform
