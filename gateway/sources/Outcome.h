// Outcome: the result of handling a mail.
#pragma once

namespace Gateway {

enum class Outcome {
  Delivered,
  Duplicate,  // its reply was stored before; nothing was changed
  Refused,    // by the mail's own fault or by a policy; trying again won't help
  Held,       // refused, and kept with its reason
  Retry,      // any other failure; nothing is lost
};

// True if the mail needs no further handling, so that it leaves a queue.
constexpr bool IsSettled(Outcome outcome) {
  return outcome == Outcome::Delivered || outcome == Outcome::Duplicate || outcome == Outcome::Held;
}

}  // namespace Gateway
