// MailboxThread: takes the mail of one mailbox from its source, on a thread of its own, until it is stopped.
#pragma once

#include <functional>
#include <memory>
#include <mutex>

#include "gateway/service/MailboxWork.h"
#include "gateway/service/ServiceLoop.h"

namespace Gateway {

// A mailbox that fails for any reason is tried again: its record may not exist yet, its server may be down,
// its disk not mounted. See ServiceLoop, and for the operations, which are for one other thread.
class MailboxThread final : private MailboxObserver, private ServiceTask {
 public:
  // Starts the thread. delivered is called on it after each reply that was stored. The log must outlive the
  // object.
  MailboxThread(MailboxSettings settings, ServiceLog& log, std::function<void()> delivered);
  MailboxThread(const MailboxThread&) = delete;
  MailboxThread& operator=(const MailboxThread&) = delete;

  // Waits until the mail under way is finished.
  ~MailboxThread() override = default;

  // No other mail is begun. Doesn't wait.
  void RequestStop() { loop_.RequestStop(); }
  bool Failing() const { return loop_.Failing(); }
  bool Alive() const { return loop_.Alive(); }

 private:
  void Handled(const MailResult& result, bool news) override;
  void WorkingFor(std::chrono::minutes longest) override { loop_.WorkingFor(longest); }

  void Serve() override;
  void Close() override;
  void Interrupt() override;

  const MailboxSettings settings_;
  ServiceLog& log_;
  const std::function<void()> delivered_;

  std::mutex mutex_;  // for what follows
  std::shared_ptr<MailboxWork> work_;

  ServiceLoop loop_;  // last, since its thread uses all others
};

}  // namespace Gateway
