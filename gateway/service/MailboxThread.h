// MailboxThread: serves one mailbox on a thread of its own, until it is stopped.
#pragma once

#include <atomic>
#include <condition_variable>
#include <thread>

#include "gateway/service/MailboxWork.h"
#include "gateway/service/ServiceLog.h"

namespace Gateway {

// A mailbox that fails for any reason is tried again after a back-off with jitter of up to 15 minutes: its
// record may not exist yet, its server may be down, its disk not mounted. A failure is logged once, and again
// only if its reason changes or it is over. Everything that belongs to the mailbox is created and
// destroyed on the thread. The operations are for one other thread.
class MailboxThread final : private MailboxObserver {
 public:
  // Starts the thread. The log must outlive the object.
  MailboxThread(MailboxSettings settings, ServiceLog& log);
  MailboxThread(const MailboxThread&) = delete;
  MailboxThread& operator=(const MailboxThread&) = delete;

  // Waits until the mail under way is finished.
  ~MailboxThread() override;

  // No other mail is begun. Doesn't wait.
  void RequestStop();

  const MailboxSettings& Settings() const { return settings_; }

  // True while the last attempt to serve the mailbox failed.
  bool Failing() const { return failing_; }

  // False if the thread has reported nothing for longer than its present work can take.
  bool Alive() const;

 private:
  void Handled(const MailResult& result, bool news) override;
  void WorkingFor(std::chrono::minutes longest) override;

  void Run();
  void Serve();
  void Fail(const String& reason);
  void Succeed();
  void Pause(std::chrono::milliseconds time);
  bool Stopping();

  const MailboxSettings settings_;
  ServiceLog& log_;
  std::atomic<bool> failing_ = false;
  std::atomic<std::chrono::steady_clock::rep> quietUntil_;

  String reason_;  // of the present failure
  BackOff backOff_;

  std::mutex mutex_;  // for what follows
  std::condition_variable wake_;
  bool stopping_ = false;
  std::shared_ptr<MailboxWork> work_;

  std::thread thread_;  // last, since it uses all others
};

}  // namespace Gateway
