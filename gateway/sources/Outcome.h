// Outcome: what became of a mail.
#pragma once

namespace Gateway {

enum class Outcome {
  Delivered,
  Duplicate,  // its reply was stored before; nothing was changed
  Refused,    // by the mail's own fault or by a policy; trying again won't help
  Held,       // refused, and kept with its reason
  Retry,      // any other failure; nothing is lost
};

}  // namespace Gateway
