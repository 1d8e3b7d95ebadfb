// Stores: where a user's data and the libraries lie, and whether the stores were set up.
#pragma once

#include "platform/Text.h"

namespace Host {

using namespace Platform;

// The folder of the libraries for a person to read, without links and "..".
String ShownLibraryFolder();

// Raises a CommandError that names `tvmail init` where a store is missing or the place of the mailboxes is.
void RequireStores();

}  // namespace Host
