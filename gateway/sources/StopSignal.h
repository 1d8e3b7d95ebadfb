// StopSignal: the wish of a user or a service manager that the program ends soon.
#pragma once

namespace Gateway {

// From here on an interrupt or a termination ends the work between two messages instead of in the middle of
// one, and a reader of the output that goes away no longer kills the program. Main thread.
void CatchStopSignals();

// True once such a signal has come.
bool StopWanted();

}  // namespace Gateway
