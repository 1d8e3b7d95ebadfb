// NoticeRoutes: the servers and commands by which mail leaves, and which of them are left alone for now.
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "gateway/notices/MailTransport.h"
#include "gateway/notices/NoticeSettings.h"

namespace Gateway {

// The pause before a mail or a server is tried again that failed this number of times: 5 s after the first
// time, doubled with each further one, up to an hour. 0 without a failure. Pure.
std::chrono::seconds NoticePause(std::int32_t failures);

// Transports and their connections are kept while mails follow each other. One thread, except for Interrupt.
class NoticeRoutes {
 public:
  explicit NoticeRoutes(NoticeSettings settings) : settings_(std::move(settings)) {}
  NoticeRoutes(const NoticeRoutes&) = delete;
  NoticeRoutes& operator=(const NoticeRoutes&) = delete;

  struct Attempt {
    SendResult Result;
    bool Tried = true;              // false if the route was left alone, or after Interrupt
    std::chrono::seconds Pause{0};  // if Unreachable: how long the route is left alone
  };

  // Sends the mail by an SMTP host, or by a command, which may be empty for the usual one. Raises 380 for a
  // host that isn't usable.
  Attempt SendBySmtp(const String& host, const OutgoingMail& mail);
  Attempt SendByCommand(const String& command, const OutgoingMail& mail);

  // No route is left alone any longer.
  void Reopen();

  // Closes what was not used for some seconds.
  void CloseIdle();

  // Ends a Send under way, and each later one, as Unreachable. Any thread.
  void Interrupt();
  bool Interrupted();

 private:
  using Clock = std::chrono::steady_clock;

  struct Route {
    std::unique_ptr<MailTransport> Transport;  // null while it isn't used
    Clock::time_point Used;
    std::int32_t Failures = 0;  // in a row
    Clock::time_point Closed;   // left alone until then
    String Reason;
  };

  template <class Make>
  Attempt Send(const std::string& key, const OutgoingMail& mail, Make make);
  bool SetCurrent(MailTransport* transport);

  const NoticeSettings settings_;
  std::map<std::string, Route> routes_;

  std::mutex mutex_;  // for what follows
  MailTransport* current_ = nullptr;
  bool interrupted_ = false;
};

}  // namespace Gateway
