// Folders: where files are. Paths are UTF-8 or, in a String, UTF-16.
//
// The environment is read at each call; the path of a loaded library is found once. Any thread, but not
// while another one calls setenv.
#pragma once

#include <string>

#include "platform/Text.h"

namespace Runtime {

using Platform::String;

// The folder of the stores: TALVANE_HOME if set; else /var/lib/talvane for the superuser, and
// $XDG_DATA_HOME/talvane or ~/.local/share/talvane for a user. No separator at its end; it need not exist.
// Raises 76 if TALVANE_HOME is not an absolute path, and if the user has no home folder.
std::string HomePath();
String HomeFolder();

// The folder of the run time's own file, which holds the other libraries.
const std::string& LibraryPath();
String LibraryFolder();

// The folder of the installed data, which holds help/ and resources/. It need not exist: in a build, both are
// in the library folder or in the source tree.
std::string DataPath();

// The full path of the library or program that holds the address; empty if none does.
std::string FileOfAddress(const void* address);

// The absolute path. Symbolic links in its folder are resolved, one at its end is not.
std::string FullPath(const std::string& path);

// The part of a path before its last separator: "/" for a file in the root, "." for a bare name.
std::string FolderOfPath(const std::string& path);

}  // namespace Runtime
