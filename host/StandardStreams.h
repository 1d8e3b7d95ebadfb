// StandardStreams: standard input, output and error when the caller has closed some of them.
#pragma once

namespace Host {

// Opens each closed one so that reading and writing still fail. Otherwise the next file to be opened, such as
// a store, would get its descriptor. To be called before any other file is opened. Main thread.
void HoldStandardStreams();

}  // namespace Host
