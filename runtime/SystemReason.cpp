#include "runtime/SystemReason.h"

#include <sys/resource.h>

#include <cerrno>
#include <system_error>

namespace Runtime {

std::string SystemReason(int error) {
  const std::string reason = std::generic_category().message(error);
  rlimit limit{};
  if (error != EFBIG || getrlimit(RLIMIT_FSIZE, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY)
    return reason;
  return reason + ": this process may write files of at most " + std::to_string(limit.rlim_cur) +
         " bytes; raise the file size limit of the program that starts it";
}

}  // namespace Runtime
