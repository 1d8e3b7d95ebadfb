// TerminalText: makes texts from outside safe for output on a terminal. Pure; any thread.
#pragma once

#include <string>

#include "platform/Text.h"

namespace Platform {

// True for control characters, characters that change the writing direction, and invisible ones.
bool IsUnsafeOnTerminal(char16_t c);

// The text in UTF-8. Control characters, which could be commands to the terminal, lone surrogates, characters
// that change the writing direction and other invisible ones are written as \uXXXX. Tabs and line ends stay;
// CR LF and CR become LF.
std::string TerminalText(StringView text);
std::string TerminalText(const std::string& utf8);

// The same on one line: line ends and tabs become blanks.
std::string TerminalLine(StringView text);

}  // namespace Platform
