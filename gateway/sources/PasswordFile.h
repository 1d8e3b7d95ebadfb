// PasswordFile: the password of a mailbox on a server.
#pragma once

#include <string>

namespace Gateway {

// The first line of the file, UTF-8, without a byte order mark and its line end. Raises 57, saying what to
// type, for a file that other users may read, that belongs to neither this process's user nor the superuser,
// or whose first line is no password.
std::string ReadPasswordFile(const std::string& path);

}  // namespace Gateway
