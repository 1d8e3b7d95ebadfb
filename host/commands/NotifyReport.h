// NotifyReport: prints what tvmail notify does.
#pragma once

#include <cstddef>
#include <optional>

#include "gateway/notices/NoticeSender.h"

namespace Host {

using namespace Platform;

// Lines are on standard output, failures of mailboxes on standard error. Main thread.
class NotifyReport {
 public:
  explicit NotifyReport(bool json) : json_(json) {}

  void Add(const String& mailbox, const DueNotice& notice, const Gateway::SendResult& result);
  void EndMailbox(const Gateway::NoticeSender::PassResult& pass);
  // The limit a minute ended the work of a mailbox.
  void Limited(const String& mailbox, std::int32_t waiting, int perMinute, std::chrono::milliseconds time);
  void Dropped(const String& mailbox, std::int32_t count);
  void Fail(const String& mailbox, const String& reason);

  // Prints the summary, not in JSON. False if a mail wasn't sent, a mailbox failed, or the work was stopped.
  bool Finish(bool stopped, bool dropping);

 private:
  const bool json_;
  std::size_t sent_ = 0, deferred_ = 0, givenUp_ = 0, postponed_ = 0;
  bool failed_ = false, limited_ = false;
  std::optional<std::chrono::milliseconds> next_;
};

}  // namespace Host
