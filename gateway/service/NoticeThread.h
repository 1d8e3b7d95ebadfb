// NoticeThread: sends what one mailbox's project has to send, on a thread of its own, until it is stopped.
#pragma once

#include <atomic>
#include <memory>
#include <mutex>

#include "gateway/notices/NoticeSender.h"
#include "gateway/service/Configuration.h"
#include "gateway/service/ServiceLoop.h"

namespace Gateway {

// Looks each second whether something is due, which costs one read of the project's database, since other
// processes store replies too. A server that can't be reached is logged as a failure of the loop, a mail that
// is deferred at its first attempt, and each mail that is sent or given up. See ServiceLoop, and for the
// operations, which are for other threads.
class NoticeThread final : private NoticeObserver, private ServiceTask {
 public:
  // Starts the thread. The log must outlive the object.
  NoticeThread(MailboxSettings settings, ServiceLog& log);
  NoticeThread(const NoticeThread&) = delete;
  NoticeThread& operator=(const NoticeThread&) = delete;

  // Waits until the mail under way is sent, or its server is given up.
  ~NoticeThread() override = default;

  // No other mail is begun. Doesn't wait.
  void RequestStop() { loop_.RequestStop(); }
  // Looks now.
  void Wake() { loop_.Wake(); }
  // Tries now what waits for another attempt.
  void EndPauses();
  bool Failing() const { return loop_.Failing(); }
  bool Alive() const { return loop_.Alive(); }

 private:
  void Attempted(const Platform::DueNotice& notice, const SendResult& result) override;
  void WorkingFor(std::chrono::minutes longest) override { loop_.WorkingFor(longest); }

  void Serve() override;
  void Close() override;
  void Interrupt() override;
  NoticeSender::PassResult PassOnce(const String& projectPath);
  std::shared_ptr<NoticeSender> Sender();

  const MailboxSettings settings_;
  ServiceLog& log_;
  bool unreachable_ = false;  // a server, at the last attempt
  std::atomic<bool> endPauses_ = false;

  std::mutex mutex_;  // for what follows
  std::shared_ptr<NoticeSender> sender_;

  ServiceLoop loop_;  // last, since its thread uses all others
};

}  // namespace Gateway
