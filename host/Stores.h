// Stores: whether the stores were set up, and where the libraries are.
#pragma once

#include "host/ExitCode.h"
#include "platform/contracts/GeneralServices.h"

namespace Host {

using namespace Platform;

// The folder of the libraries without links and "..", for display.
String ShownLibraryFolder();

// Raises a CommandError with the given code if the hive's store doesn't exist: it was never created, or its
// disk isn't mounted.
void RequireStore(Hive hive, ExitCode code = NotConfigured);

// Raises a CommandError that names `tvmail init` if a store or one of the keys that init creates doesn't
// exist.
void RequireStores();

}  // namespace Host
