// ServedMailbox: the threads that serve one mailbox.
#pragma once

#include <memory>

#include "gateway/service/MailboxThread.h"
#include "gateway/service/NoticeThread.h"

namespace Gateway {

// One takes its mail, if it has a source, and one sends, unless that is switched off: a server for sending
// that is down delays no mail that comes. One thread.
class ServedMailbox {
 public:
  // Starts the threads. The log must outlive the object.
  ServedMailbox(MailboxSettings settings, ServiceLog& log) : settings_(std::move(settings)) {
    if (settings_.Notices.Send) notices_ = std::make_unique<NoticeThread>(settings_, log);
    if (settings_.Source)
      mails_ = std::make_unique<MailboxThread>(settings_, log, [this] {
        if (notices_) notices_->Wake();
      });
  }
  ServedMailbox(const ServedMailbox&) = delete;
  ServedMailbox& operator=(const ServedMailbox&) = delete;

  // Waits until the mails under way are finished.
  ~ServedMailbox() { RequestStop(); }

  // No other mail is begun. Doesn't wait.
  void RequestStop() {
    if (mails_) mails_->RequestStop();
    if (notices_) notices_->RequestStop();
  }

  // Sends now what waits for another attempt.
  void EndPauses() {
    if (notices_) notices_->EndPauses();
  }

  const MailboxSettings& Settings() const { return settings_; }
  bool Failing() const { return (mails_ && mails_->Failing()) || (notices_ && notices_->Failing()); }
  bool Alive() const { return (!mails_ || mails_->Alive()) && (!notices_ || notices_->Alive()); }

 private:
  const MailboxSettings settings_;
  std::unique_ptr<NoticeThread> notices_;
  std::unique_ptr<MailboxThread> mails_;  // after what it wakes
};

}  // namespace Gateway
