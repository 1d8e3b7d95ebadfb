// FailureJudge: whether a mail that the component complained of is itself at fault.
#pragma once

#include <string>
#include <vector>

#include "gateway/sources/Outcome.h"
#include "platform/Text.h"

namespace Gateway {

using Platform::String;

struct Verdict {
  Outcome Result = Outcome::Delivered;
  // What a reader is told in place of a complaint that only names a failure, in his language; empty
  // otherwise.
  String Reason = {};
  std::string WhyEmpty =
      {};  // why nothing can be read in a reply that was delivered; empty where something can
};

class FailureJudge {
 public:
  // Delivered for the empty text; Refused where the mail's sender, subject, body or discussion number is the
  // reason, so that trying again can't help; Retry for all else, also when the texts can't be had to
  // compare with. Raises nothing. Main thread.
  Verdict Judge(const String& failure);

 private:
  // A complaint that is the mail's own fault, as the component words it.
  struct OwnFault {
    String Failure;
    String Reason;
  };
  static std::vector<OwnFault> LoadOwnFaults();

  std::vector<OwnFault> ownFaults_;  // loaded at the first failure, and again at the next if that went wrong
};

}  // namespace Gateway
