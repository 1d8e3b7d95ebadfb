// ProjectCreation: makes a project, its file and its database, all or nothing.
#pragma once

#include "siblings/Talvane40/ProjectDatabase.h"

namespace Talvane40 {

// Makes the project file, as it is named, and beside it a database of a name that is free. Both have mode
// 0600 and are on the disk when this comes back. A file that exists is left untouched. Raises 57 with the
// reason in words; then nothing is left behind, but for a database without a project file after the process
// was killed.
void CreateProject(StringView path, StringView name, const User& owner, StringView password);

}  // namespace Talvane40
