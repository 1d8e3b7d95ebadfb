// Patience: how long an operation waits for another program that holds a database or a file.
#pragma once

#include <chrono>

namespace Runtime {

// Ten seconds, unless it was set. Any thread.
std::chrono::milliseconds Patience();

// For the whole process, from the next opening of a database and the next lock on.
void SetPatience(std::chrono::milliseconds patience);

}  // namespace Runtime
