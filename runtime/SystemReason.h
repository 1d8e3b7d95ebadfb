// SystemReason: why the system refused a call, in words for the person who has to act on it.
#pragma once

#include <string>

namespace Runtime {

// The system's text of an errno. Where the process's own limit on the size of files is the reason, the limit
// is named with it. Any thread.
std::string SystemReason(int error);

}  // namespace Runtime
