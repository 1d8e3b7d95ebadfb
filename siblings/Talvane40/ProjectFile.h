// ProjectFile: the .TVS file, by which a project is known.
//
// UTF-8 text with sections and keys. The section [Project] holds Format=1, the project's Name, and Database,
// the file of its database relative to the project file. All other sections belong to others.
#pragma once

#include <filesystem>

#include "platform/Text.h"

namespace Talvane40 {

using namespace Platform;

struct ProjectFile {
  String Name;
  std::filesystem::path Database;  // absolute
};

// Raises 76 for a file that is missing, and 57 with the reason in words for one that is a folder, unreadable,
// no project file, or of a newer format.
ProjectFile ReadProjectFile(StringView path);

// The text of a new project file.
std::string NewProjectFileText(StringView name, const std::string& database);

// A path as the file system takes it, absolute, without blanks around it. Raises 380 for an empty one and one
// with a NUL in it.
std::filesystem::path PathOf(StringView typed);

}  // namespace Talvane40
