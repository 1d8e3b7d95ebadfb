// StoppableOutput: writes to a stream whose reader may have stopped reading, without keeping the program from
// ending after a stop signal.
#pragma once

#include <string_view>

namespace Gateway {

// Writes all bytes to the descriptor. Waits while its reader is behind; after a stop signal it waits no
// longer. Returns 0, or the errno of the failure: EINTR after a stop signal. A part of the bytes may have
// been written then. The descriptor stays in blocking mode, as other processes may share it. Main thread.
int WriteUnlessStopped(int descriptor, std::string_view bytes);

}  // namespace Gateway
