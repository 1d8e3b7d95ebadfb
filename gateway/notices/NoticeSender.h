// NoticeSender: sends what the project of one mailbox has to send.
#pragma once

#include <chrono>
#include <memory>
#include <optional>

#include "gateway/notices/NoticeSettings.h"
#include "platform/contracts/NoticeQueue.h"

namespace Gateway {

// Told of each attempt, on the sender's thread.
class NoticeObserver {
 public:
  virtual ~NoticeObserver() = default;
  virtual void Attempted(const Platform::DueNotice& notice, const SendResult& result) = 0;
  // The longest time until the next call of this observer.
  virtual void WorkingFor(std::chrono::minutes longest) = 0;
};

// One thread, except for Interrupt.
class NoticeSender {
 public:
  // Raises 429 without a sibling. The observer must outlive the object.
  NoticeSender(NoticeSettings settings, NoticeObserver& observer);
  NoticeSender(const NoticeSender&) = delete;
  NoticeSender& operator=(const NoticeSender&) = delete;
  ~NoticeSender();

  struct PassResult {
    bool Complete = true;  // false after Interrupt, and while another program sends
    std::size_t Sent = 0, Deferred = 0, Refused = 0;
    std::size_t Postponed = 0;  // not tried, since their server is left alone
    bool Limited = false;       // it ended at the limit a minute
    String Problem;             // why nothing is sent by the project's own settings; empty if it is
    String Reason;              // of the last one that wasn't sent
    std::optional<std::chrono::milliseconds> Next;  // until something is due; nothing if nothing waits
  };

  // Sends what is due in the project of this file; what waits for another attempt, too, if now is true. A
  // temporary failure is tried again after 5 s, doubled up to an hour, for 5 days after the first attempt; a
  // permanent one ends the notice. A server that can't be reached is left alone for the same pauses. Posted
  // replies with a route of their own are sent also if the project's settings are wrong. Raises the reason if
  // the project can't be read, or if its mailbox has no address; nothing is lost then.
  PassResult Pass(const String& projectPath, bool now = false);

  // How many mails of the last pass's project could be sent now if there were no limit.
  std::int32_t Ready();

  // Any thread.
  void Interrupt();

 private:
  class Work;
  std::unique_ptr<Work> work_;
};

}  // namespace Gateway
