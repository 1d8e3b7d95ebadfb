// DeliveryReport: tells what became of each mail, and what the program's exit code says of them all.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

#include "host/deliver/FailureJudge.h"
#include "platform/Text.h"

namespace Host {

using Platform::String;
using Platform::StringView;

// Called on the main thread. Each mail's line is written out before the next mail is begun, so that it stands
// whatever happens then. Output that can't be written changes no exit code: that one speaks of the mails.
class DeliveryReport {
 public:
  explicit DeliveryReport(bool json);

  // A mail's outcome, and failure, the words for it. The verdict's hint is for people, and no part of the
  // JSON.
  void Tell(const std::string& source, const String& messageId, const String& failure,
            const Verdict& verdict);

  // The summary. stopped: a signal ended the work, and mails may be left. Gives the exit code of all.
  int Finish(bool stopped);

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
  std::size_t refused_ = 0;
  std::size_t toTryAgain_ = 0;
};

}  // namespace Host
