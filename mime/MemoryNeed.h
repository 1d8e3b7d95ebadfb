// MemoryNeed: checks before a mail is read whether there is enough memory.
#pragma once

#include <cstddef>

namespace Mime {

// Raises std::bad_alloc if the process can't allocate as much memory as reading a mail of that size, already
// in memory, needs at most. GLib ends the process on a failed allocation, so this must be known before.
// Reserves nothing: other threads and processes may take the memory meanwhile. A thread that asks again
// within 0.1 s, for a mail that is not larger, gets the same answer.
void RequireMemoryFor(std::size_t mailSize);

}  // namespace Mime
