// Outcome: what became of a mail.
#pragma once

namespace Gateway {

enum class Outcome {
  Delivered,
  Refused,  // the mail itself is at fault; trying again won't help
  Retry,    // anything else; nothing is lost
};

}  // namespace Gateway
