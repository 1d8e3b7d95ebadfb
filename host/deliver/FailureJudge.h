// FailureJudge: whether a mail that the component complained of is itself at fault.
#pragma once

#include <optional>
#include <vector>

#include "host/Command.h"
#include "platform/Text.h"

namespace Host {

using Platform::String;

class FailureJudge {
 public:
  // Done for the empty text; DataRefused where the mail's sender, subject, body or discussion number is the
  // reason, so that trying again can't help; TryAgain for all else, also when the texts can't be had to
  // compare with. Raises nothing. Main thread.
  ExitCode Judge(const String& failure);

 private:
  // The complaints that are the mail's own fault, as the component words them. Loaded at the first failure,
  // and again at the next if that went wrong.
  std::optional<std::vector<String>> ownFaults_;
};

}  // namespace Host
