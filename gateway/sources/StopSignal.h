// StopSignal: a request by the user or a service manager to stop.
#pragma once

namespace Gateway {

// From now on SIGINT and SIGTERM end the work between two messages, and a closed pipe on output no longer
// ends the program. Main thread.
void CatchStopSignals();

// True after such a signal. Any thread.
bool StopWanted();

}  // namespace Gateway
