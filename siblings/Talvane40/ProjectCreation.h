// ProjectCreation: creates a project: its file and its database.
#pragma once

#include "siblings/Talvane40/ProjectDatabase.h"

namespace Talvane40 {

// Creates the project file and, in its folder, a database with an unused name. Both have mode 0600 and are on
// disk when this returns. Raises 58 if the file exists, 76 if its folder doesn't, 57 with the reason
// otherwise; no file is left then. If the process is killed, a database without a project file may be left.
void CreateProject(StringView path, StringView name, const DescribedUser& owner, StringView password);

}  // namespace Talvane40
