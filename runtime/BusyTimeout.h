// BusyTimeout: how long an operation waits for a database or a file that another program has locked.
#pragma once

#include <chrono>

namespace Runtime {

// 10 s unless it was set. Any thread.
std::chrono::milliseconds BusyTimeout();

// Sets the timeout of the process. It applies to databases that are opened and locks that are requested
// afterwards.
void SetBusyTimeout(std::chrono::milliseconds timeout);

}  // namespace Runtime
