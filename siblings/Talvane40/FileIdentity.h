// FileIdentity: which file a path names now, so that one put in its place is noticed.
#pragma once

#include <sys/types.h>

#include <string>

namespace Talvane40 {

struct FileIdentity {
  dev_t Device = 0;
  ino_t Number = 0;
  bool operator==(const FileIdentity&) const = default;
};

// Zeros if there is none.
FileIdentity IdentityOf(const std::string& path);

}  // namespace Talvane40
