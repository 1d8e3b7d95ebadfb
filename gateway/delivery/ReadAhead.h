// ReadAhead: reads the next mails of sources on a thread of its own while one is being handled.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "gateway/delivery/PreparedMail.h"

namespace Gateway {

// Passes each mail of the sources, prepared, to handle, in their order and on the calling thread; moreReady
// is true if the next one can be handled at once. At most 256 mails and 1 MB are read ahead. A larger mail is
// read only when all before it were handled, and nothing is read while it is handled, so that it has as much
// memory as if there were no such thread. Without memory for the thread, and for a single mail on standard
// input, everything is done on the calling thread.
//
// Returns false if handle has returned false, or after a stop signal; mails that were read ahead are then
// dropped. Raises what handle raises, at once, and an exception of the reading.
bool ReadAhead(const std::vector<std::string>& sources, StandardInput input, const PolicySettings& policy,
               const std::function<bool(PreparedMail mail, bool moreReady)>& handle);

}  // namespace Gateway
