// Stores: where a user's data and the libraries lie, and whether the stores were set up.
#pragma once

#include "host/ExitCode.h"
#include "platform/contracts/GeneralServices.h"

namespace Host {

using namespace Platform;

// The folder of the libraries for a person to read, without links and "..".
String ShownLibraryFolder();

// Raises a CommandError with the code where the hive's store is missing: never made, or on a disk that isn't
// mounted.
void RequireStore(Hive hive, ExitCode code = NotConfigured);

// Raises a CommandError that names `tvmail init` where a store is missing or the place of the mailboxes is.
void RequireStores();

}  // namespace Host
