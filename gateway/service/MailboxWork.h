// MailboxWork: takes the mails of one mailbox from its queue to its project.
#pragma once

#include <chrono>
#include <memory>
#include <mutex>

#include "gateway/service/Configuration.h"
#include "gateway/service/MailboxLock.h"
#include "gateway/service/MailboxStatus.h"
#include "gateway/service/RetryTimes.h"
#include "gateway/sources/MailQueue.h"

namespace Gateway {

// Told what happens, on the thread of the work.
class MailboxObserver {
 public:
  virtual ~MailboxObserver() = default;

  // A mail was handled. news is false for one that has to be tried again for the same reason as before.
  virtual void Handled(const MailResult& result, bool news) = 0;

  // The longest time until the next call of this observer, for example while a server is slow.
  virtual void WorkingFor(std::chrono::minutes longest) = 0;
};

// Refused mail is held. One thread, except for Interrupt.
class MailboxWork {
 public:
  // Takes the mailbox's lock; see MailboxLock for what it raises. The mailbox must have a source. The
  // observer must outlive the object.
  MailboxWork(MailboxSettings settings, MailboxObserver& observer);

  struct PassResult {
    bool Complete = true;  // false after Interrupt
    std::size_t Left = 0;  // mails that have to be tried again
    String Reason;         // of the last one
  };

  // Handles each waiting mail, and keeps the status. Raises the reason if there is no such mailbox, the
  // component can't be created, or the queue can't be reached. The next pass begins from nothing then.
  PassResult Pass();

  // Waits until new mail may be there, a mail is to be tried again, or the time is over. Raises as Pass.
  void Wait(std::chrono::milliseconds longest);

  // Ends Pass after the mail under way, and Wait. The object isn't used again. Any thread.
  void Interrupt();

 private:
  void Open();
  void Close();
  [[noreturn]] void EndInFailure();  // with the exception being handled
  std::optional<Outcome> Handle(RawMail raw, PassResult& pass);
  bool Interrupted();

  const MailboxSettings settings_;
  MailboxObserver& observer_;
  const MailboxLock lock_;
  StatusRecorder status_;
  std::unique_ptr<MailProcessor> processor_;
  RetryTimes retries_;

  std::mutex mutex_;  // for what follows
  std::unique_ptr<MailQueue> queue_;
  bool interrupted_ = false;
};

}  // namespace Gateway
