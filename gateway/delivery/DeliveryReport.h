// DeliveryReport: prints the outcome of each mail and a summary.
#pragma once

#include <chrono>
#include <cstddef>
#include <map>
#include <string>

#include "gateway/delivery/MailResult.h"

namespace Gateway {

// Main thread. A mail's line is written when its reply is on disk, and before the program waits for another
// mail. An error on output changes no outcome. If nobody reads the output, the work waits, but a stop signal
// still ends it: the outcomes that were not written are then counted on standard error.
class DeliveryReport {
 public:
  // Form::Text has a summary at its end. With Form::Nothing only errors are written.
  enum class Form { Text, Json, Nothing };

  // oneMail: the only mail is one that a mail server passes. If it is refused, its reason is also written to
  // standard error, alone, as mail servers return that to the sender.
  DeliveryReport(Form form, bool oneMail);

  // Prints a mail's outcome.
  void Add(const MailResult& result);

  // Prints the summary, on standard error if standard output failed; not in Json. stopped: a signal ended the
  // work before the last mail. Returns the outcome of all: Retry if any mail has to be tried again or stopped
  // is true, else Refused if any was refused, else Delivered.
  Outcome Finish(bool stopped);

 private:
  std::string Counts() const;
  std::string Summary(bool stopped) const;
  void WriteLine(const std::string& line);
  void ShowProgress();
  void ClearProgress();

  const Form form_;
  const bool oneMail_;
  const bool progress_;
  bool progressShown_ = false;
  bool outputLost_ = false;
  std::chrono::steady_clock::time_point lastProgress_;
  std::map<Outcome, std::size_t> counts_;
  std::size_t empty_ = 0;         // of those delivered
  std::size_t lostOutcomes_ = 0;  // of all these
};

}  // namespace Gateway
