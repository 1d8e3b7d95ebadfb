// ServiceLog: one structured line for each mail and each change of a mailbox.
#pragma once

#include <atomic>
#include <cstddef>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "gateway/delivery/MailResult.h"
#include "gateway/notices/MailTransport.h"
#include "platform/contracts/NoticeQueue.h"

namespace Gateway {

// Where standard error leads to the journal, an entry with fields is sent: MESSAGE, and TALVANE_ before the
// name of each field. Otherwise a line "name=value name=value" (logfmt) is written on standard error: values
// with blanks, quotation marks or equals signs are quoted, and control characters are written as \uXXXX, so
// that no mail can add a line or a field. Neither holds a mail's body or subject, or a password.
//
// A reader that is more than a second behind loses lines, which are counted, rather than stopping the
// service. Any thread; raises nothing but std::bad_alloc.
class ServiceLog {
 public:
  ServiceLog();
  ServiceLog(const ServiceLog&) = delete;
  ServiceLog& operator=(const ServiceLog&) = delete;

  // A mail that came, with mailbox, source, key, outcome, rule, reason, answered and milliseconds. Its
  // warning is an event.
  void Mail(const String& mailbox, const MailResult& result);

  // A mail that was sent, deferred or given up, with mailbox, address, discussion, reply, outcome and reason.
  void Notice(const String& mailbox, const Platform::DueNotice& notice, const SendResult& result);

  // The service or a mailbox: "started", "failing", "working"... The mailbox may be empty.
  enum class Severity { Error = 3, Warning = 4, Notice = 5, Information = 6 };  // as in syslog
  void Event(Severity severity, std::string_view event, const String& mailbox, const String& text);

 private:
  using Field = std::pair<std::string_view, std::string>;  // without empty ones
  void Send(Severity severity, const std::string& message, const std::vector<Field>& fields);
  void WriteLine(Severity severity, const std::vector<Field>& fields);

  const bool journal_;
  std::mutex mutex_;
  std::size_t lost_ = 0;
};

}  // namespace Gateway
