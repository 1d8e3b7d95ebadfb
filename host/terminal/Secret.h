// Secret: how a password reaches the program. Never on the command line, where every user of the machine sees
// it.
#pragma once

#include <optional>
#include <string>

#include "platform/Text.h"

namespace Host {

// Reads a password from a file, or from standard input for "-". A byte order mark in front of it and one line
// end behind it are cut and nothing else. A file that other users may read gets a warning on standard error.
// Without a file the person at the terminal is asked, without echo, for what the prompt says, until something
// is typed. Raises a CommandError where the file has no name, can't be read, is empty or isn't UTF-8, and
// where there is no terminal to ask at.
Platform::String ReadSecret(const std::optional<std::string>& file, const std::string& prompt);

// The same for a new password: at a terminal it is asked for twice, until both are equal.
Platform::String ReadNewSecret(const std::optional<std::string>& file, const std::string& prompt);

}  // namespace Host
