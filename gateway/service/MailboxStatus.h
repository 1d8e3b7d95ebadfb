// MailboxStatus: the outcomes of a mailbox's mails, for administrators and monitoring.
//
// It is kept in the file HOME/status/NAME, which the service and every tvmail deliver add to, and another
// process reads. The file holds no mail: if it is lost, only the counts of the day are.
#pragma once

#include <chrono>
#include <cstddef>
#include <map>
#include <optional>
#include <string>

#include "gateway/delivery/MailResult.h"

namespace Gateway {

using Platform::StringView;
using StatusTime = std::chrono::sys_seconds;

struct MailboxStatus {
  std::optional<StatusTime> LastDelivered;
  std::optional<StatusTime> LastFailure;  // of the source, or of a mail that has to be tried again
  String Reason;                          // of the last failure; empty if there was none
  bool Failing = false;                   // the last attempt failed
  std::string Day;                        // of the counts, as "2024-05-01" in local time
  std::map<Outcome, std::size_t> Counts;  // of this day

  // Adds what happened later than this.
  void Add(const MailboxStatus& later);
};

// The stored status; an empty one if there is none, or if the file is damaged. The counts are those of today.
// Raises 57 if the file can't be read. Any thread.
MailboxStatus ReadStatus(StringView mailbox);

// Collects what happens to the mail of one mailbox and stores it: at most once a second, and at its end.
// Nothing is synced to the disk. A status that can't be stored is no failure of the mail. One thread.
class StatusRecorder {
 public:
  explicit StatusRecorder(String mailbox) : mailbox_(std::move(mailbox)) {}
  StatusRecorder(const StatusRecorder&) = delete;
  StatusRecorder& operator=(const StatusRecorder&) = delete;
  ~StatusRecorder() { Store(); }

  // Counts the mail. One that has to be tried again is a failure; any other outcome ends one.
  void Add(const MailResult& result);

  // The mailbox can't be served, for this reason; or it can again.
  void AddFailure(const String& reason);
  void AddSuccess();

  // Stores what was added since the last time. Raises nothing.
  void Store() noexcept;

 private:
  void StoreIfDue();

  const String mailbox_;
  MailboxStatus added_;
  bool changed_ = false;
  std::chrono::steady_clock::time_point stored_;
};

}  // namespace Gateway
