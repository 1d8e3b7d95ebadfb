// Secret: how a password reaches the program. Never on the command line, where every user of the machine sees
// it.
#pragma once

#include <string>

#include "platform/Text.h"

namespace Host {

// Reads a password from a file, or from standard input for "-". One line end at its end is cut and nothing
// else. An empty name asks the person at the terminal, without echo, for what the prompt says. Raises a
// Complaint where the file can't be read or isn't UTF-8, and where there is no terminal to ask at.
Platform::String ReadSecret(const std::string& file, const std::string& prompt);

// The same for a new password: at a terminal it is asked for twice, until both are equal.
Platform::String ReadNewSecret(const std::string& file, const std::string& prompt);

}  // namespace Host
