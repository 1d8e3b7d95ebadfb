// LineEditor: reads a line with editing keys. Entries are not kept in a history.
#pragma once

#include <optional>
#include <string>

namespace Host {

// True if standard input and output are a terminal whose cursor can be moved.
bool CanEditLine();

// Shows the prompt, one line in UTF-8 without control characters, and returns the typed line in UTF-8 without
// its line end. The tab key completes a path. Returns nothing at the end of the input (Ctrl-D on an empty
// line). A signal that ends or stops the program restores the terminal first; after a stop the editing
// continues. One thread.
std::optional<std::string> ReadEditedLine(const std::string& prompt);

}  // namespace Host
