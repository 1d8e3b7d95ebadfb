// SystemReason: why a system call failed, in words for the user.
#pragma once

#include <string>

namespace Runtime {

// The text of an errno in the user's language, for an unusual one in English. If the process's limit on file
// sizes is the reason (EFBIG), the text names the limit and says what to do. Any thread.
std::string SystemReason(int error);

}  // namespace Runtime
