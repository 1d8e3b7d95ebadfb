// Folders: the places of files, in the bytes that the system takes.
//
// The environment is read anew at each call; the path of a loaded library is found once. Any thread that
// doesn't race with setenv.
#pragma once

#include <string>

namespace Runtime {

// HomeFolder in UTF-8. Raises 76 as it does.
std::string HomePath();

// LibraryFolder in UTF-8.
const std::string& LibraryPath();

// The folder of the installed data, which holds help/ and resources/. It need not exist: in a build, both lie
// in the library folder or in the source tree.
std::string DataPath();

// The full path of the library or program that holds the address, or the empty string if none does.
std::string FileOfAddress(const void* address);

// The absolute path, its folder by its real name; a symbolic link at its end stays one.
std::string FullPath(const std::string& path);

// The part of a path in front of its last separator: "/" for a file in the root, "." for a bare name.
std::string FolderOfPath(const std::string& path);

}  // namespace Runtime
