// StandardStreams: standard input, output and error, also where the caller closed some of them.
#pragma once

namespace Host {

// Opens each of the three that is closed, in a way that reading or writing it still fails. Without that the next file
// that is opened, a store for example, would be taken for it. Called before any other file is opened. Main thread.
void HoldStandardStreams();

}  // namespace Host
