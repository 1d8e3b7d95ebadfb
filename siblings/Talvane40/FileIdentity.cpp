#include "siblings/Talvane40/FileIdentity.h"

#include <sys/stat.h>

namespace Talvane40 {

FileIdentity IdentityOf(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) return {};
  return {status.st_dev, status.st_ino};
}

}  // namespace Talvane40
