// Outcome: what became of a mail.
#pragma once

namespace Gateway {

enum class Outcome {
  Delivered,
  Refused,  // the mail itself is the cause; trying again won't help
  Retry,    // any other failure; nothing is lost
};

}  // namespace Gateway
