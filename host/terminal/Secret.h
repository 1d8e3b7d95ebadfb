// Secret: reads a password. A password is never taken from the command line, which every user of the machine
// can see.
#pragma once

#include <optional>
#include <string>

#include "platform/Text.h"

namespace Host {

// Reads a password from a file, or from standard input for "-". A byte order mark in front and one line end
// after it are removed, and nothing else. Warns on standard error if other users may read the file. Without a
// file, asks on the terminal with the prompt, without echo, until something is typed. Raises a CommandError
// if the file's name is empty, if the file can't be read, is empty or isn't UTF-8, and if there is no
// terminal.
Platform::String ReadSecret(const std::optional<std::string>& file, const std::string& prompt);

// The same for a new password: on a terminal it is asked for twice, until both entries are equal.
Platform::String ReadNewSecret(const std::optional<std::string>& file, const std::string& prompt);

}  // namespace Host
