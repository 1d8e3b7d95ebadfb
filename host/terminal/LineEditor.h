// LineEditor: a line that is typed with the keys of an editor. What is typed is kept nowhere else.
#pragma once

#include <optional>
#include <string>

namespace Host {

// True if standard input and output are a terminal that can move its cursor.
bool CanEditLine();

// Shows the prompt, one line in UTF-8 without control characters, and gives what is typed, in UTF-8 without
// its line end. The tab key completes a path. Nothing at the end of the input (Ctrl-D on an empty line).
// Signals that end or stop the program put the terminal back first; one that was stopped goes on with what
// was typed. One thread.
std::optional<std::string> ReadEditedLine(const std::string& prompt);

}  // namespace Host
