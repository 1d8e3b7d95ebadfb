// StoreFolder: the folder of the stores, and the rights without which a store isn't used.
//
// Inside the run time alone. Any thread.
#pragma once

#include <string>

struct stat;

namespace Runtime {

// Makes the folder with mode 0700, and those of its parents that are missing with at most 0755, as far as the
// process's mask allows. Raises 57 with the reason.
void MakeStoreFolder(const std::string& folder);

// A registry decides which libraries are loaded. So nobody else may have written it: raises 57, with what to
// do instead, if others than the owner may write the file or folder, or if it belongs neither to the
// process's user nor to the superuser.
void RequireTrusted(const std::string& path, const struct stat& status);
void RequireTrusted(const std::string& path);

}  // namespace Runtime
