// FailureJudge: decides whether a mail that the component refused is itself the cause.
#pragma once

#include <cstdint>
#include <vector>

#include "gateway/sources/Outcome.h"
#include "platform/Text.h"

namespace Gateway {

using Platform::String;

struct Verdict {
  Outcome Result = Outcome::Delivered;
  // For people, in their language. Empty if the result is Delivered.
  String Reason = {};
  std::int32_t Text = 0;  // the number of a refusal's reason in the catalogues
};

// One thread.
class FailureJudge {
 public:
  // Judges the result of MailHandler_HandleMessage. Delivered for the empty text; Refused if the mail's
  // sender, subject, body or discussion number is the cause, so that trying again can't help; Retry for
  // everything else, also if the texts to compare with can't be loaded. Raises nothing.
  Verdict Judge(const String& failure);

 private:
  // A result of the component for which the mail itself is the cause.
  struct OwnFault {
    String Failure;
    Verdict Refused;
  };
  static std::vector<OwnFault> LoadOwnFaults();

  std::vector<OwnFault> ownFaults_;  // loaded at the first failure; after an error, again at the next
};

}  // namespace Gateway
