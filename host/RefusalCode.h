// SiblingCheck: whether what the component stands on can be had at this moment.
#pragma once

#include "host/ExitCode.h"

namespace Host {

// The code of a dialog that refused its entries: they are the user's to mend, but without a sibling the same
// entries may pass another time.
ExitCode CodeOfRefusal();

}  // namespace Host
