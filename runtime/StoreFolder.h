// StoreFolder: creates the folder of the stores, and checks that no other user can change a store.
//
// Inside the run time alone. Any thread.
#pragma once

#include <string>

struct stat;

namespace Runtime {

// Creates the folder with mode 0700 and its missing parents with mode 0755, each restricted by the umask. A
// folder that exists is left as it is. Raises 57 with the reason.
void MakeStoreFolder(const std::string& folder);

// The registry decides which libraries are loaded, so no other user may write it. Raises 57, with what to do,
// if group or others may write the file or folder, or if its owner is neither the process's user nor the
// superuser.
void RequireTrusted(const std::string& path, const struct stat& status);
void RequireTrusted(const std::string& path);

}  // namespace Runtime
