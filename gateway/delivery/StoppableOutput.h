// StoppableOutput: writes to a stream whose reader may have stopped reading, without keeping the program from
// ending after a stop signal.
#pragma once

#include <string_view>

namespace Gateway {

// Writes all bytes to the descriptor. Waits while the reader doesn't read; a stop signal ends
// the wait. Returns 0, or the errno of the failure: EINTR after a stop signal. A part of the bytes may have
// been written then. The descriptor stays in blocking mode, as other processes may share it. Main thread.
int WriteUnlessStopped(int descriptor, std::string_view bytes);

}  // namespace Gateway
