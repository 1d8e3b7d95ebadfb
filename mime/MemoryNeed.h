// MemoryNeed: whether there is memory enough for a mail, asked before it is read.
#pragma once

#include <cstddef>

namespace Mime {

// Raises std::bad_alloc unless the process may take as much memory as reading a mail of that size, which is
// in memory already, needs at most. The parser's library ends the process where an allocation fails, so that
// this has to be known before. Takes nothing itself: what another thread or process takes meanwhile is
// missing.
void RequireMemoryFor(std::size_t mailSize);

}  // namespace Mime
