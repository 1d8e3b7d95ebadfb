// DeliveryReport: tells what became of each mail and of all of them.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

#include "gateway/delivery/FailureJudge.h"
#include "platform/Text.h"

namespace Gateway {

using Platform::String;
using Platform::StringView;

// Called on the main thread. Each mail's line is written out before the next mail is begun, so that it stands
// whatever happens then. Output that can't be written changes no outcome.
class DeliveryReport {
 public:
  explicit DeliveryReport(bool json);

  // A mail's outcome, and failure, the words for it. The verdict's hint is for people, and no part of the
  // JSON. Why a reply is empty is part of both.
  void Tell(const std::string& source, const String& messageId, const String& failure,
            const Verdict& verdict);

  // The summary. stopped: a signal ended the work, and mails may be left. Gives the outcome of all: Retry if
  // any mail or the stop needs it, otherwise Refused if any was, otherwise Delivered.
  Outcome Finish(bool stopped);

 private:
  void WriteLine(const std::string& line);
  void ShowProgress();
  void ClearProgress();

  const bool json_;
  const bool progress_;
  bool progressShown_ = false;
  bool outputLost_ = false;
  std::chrono::steady_clock::time_point lastProgress_;
  std::size_t delivered_ = 0;
  std::size_t empty_ = 0;  // of those delivered
  std::size_t refused_ = 0;
  std::size_t toTryAgain_ = 0;
};

}  // namespace Gateway
