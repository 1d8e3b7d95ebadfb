// HelpText: shows a help page as text on a terminal.
#pragma once

#include <string>

#include "host/terminal/Terminal.h"

namespace Host {

// Shows the text of a page: on a terminal with the pager in PAGER, or less or more; otherwise unpaged.
// Returns false if the file can't be read.
bool ShowHelpText(const Terminal& terminal, const std::string& file);

// Wraps the text at blanks to this number of columns. A character of an East Asian script takes two columns,
// and a line may be broken after it.
String Wrapped(StringView text, std::size_t columns);

}  // namespace Host
