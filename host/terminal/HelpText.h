// HelpText: a help page as text on a terminal.
#pragma once

#include <string>

#include "host/terminal/Terminal.h"

namespace Host {

// Shows a page's text: on a terminal through the user's pager, that of PAGER or else less or more, and as it
// is otherwise. False where the file can't be read.
bool ShowHelpText(const Terminal& terminal, const std::string& file);

// The text with its lines broken at blanks, so that none is wider than the number of columns. A character of
// an East Asian script takes two, and a line may be broken behind it.
String Wrapped(StringView text, std::size_t columns);

}  // namespace Host
