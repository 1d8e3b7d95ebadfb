// PrintedText: texts that came from outside, made safe for a person's terminal.
#pragma once

#include <string>

#include "platform/Text.h"

namespace Platform {

// The text in UTF-8. A control character, with which a stranger's mail could steer the terminal, becomes
// U+FFFD; tabs and line ends stay, and CR LF or CR alone becomes LF.
std::string TerminalText(StringView text);
std::string TerminalText(const std::string& utf8);

// A text on one line: line ends and tabs become blanks, and control characters, lone surrogates and marks
// that turn the writing direction are written as \uXXXX.
std::string TerminalLine(StringView text);

}  // namespace Platform
