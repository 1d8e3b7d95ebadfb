// ProjectLocation: what the section [Project] of a project file (.TVS) says: the project's name, and where
// its database is. docs/formats.md describes the file.
#pragma once

#include <filesystem>

#include "platform/Text.h"

namespace Talvane40 {

using namespace Platform;

struct ProjectLocation {
  String Name;
  std::filesystem::path Database;  // absolute
};

// Raises 76 if the file doesn't exist, 380 for a folder, a file of another kind or a newer format, 70 for a
// missing permission, 57 for a file that can't be read or lacks the name or the database.
ProjectLocation ReadProjectLocation(StringView path);

// The text of a new project file. The database is a path relative to the project file.
std::string NewProjectFileText(StringView name, const std::string& database);

// The absolute path that a user typed, without blanks at its ends. Raises 380 if it is empty or holds a NUL.
std::filesystem::path PathOf(StringView typed);

}  // namespace Talvane40
