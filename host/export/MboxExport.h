// MboxExport: writes discussions as an mbox that mail programs show as threads.
#pragma once

#include "platform/contracts/ProjectAdministration.h"
#include "runtime/DurableFile.h"

namespace Host {

using namespace Platform;

// Writes a mail for each reply of these discussions and returns their number. Lines that begin with "From "
// after any number of ">" get one more ">" (mboxrd). Every reply of a discussion answers the first one.
// Message-IDs are made from the project's name and the numbers, so that a second export has the same. A user
// without an address gets one of the domain talvane.invalid. Raises 57 and more as StagedFile does.
std::size_t WriteMbox(Runtime::StagedFile& file, const ProjectAdministration& projects, const String& path,
                      const ProjectDescription& project);

}  // namespace Host
