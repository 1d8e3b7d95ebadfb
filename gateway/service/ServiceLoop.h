// ServiceLoop: repeats one piece of a mailbox's work on a thread of its own, until it is stopped.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string_view>
#include <thread>

#include "gateway/service/ServiceLog.h"
#include "gateway/sources/BackOff.h"

namespace Gateway {

// What the loop repeats. All but Interrupt are called on its thread, on which everything of the work is
// created and destroyed.
class ServiceTask {
 public:
  virtual ~ServiceTask() = default;

  // Works once, and waits for more work. Raises the reason why it can't: the loop tries again after a
  // back-off with jitter of up to 15 minutes.
  virtual void Serve() = 0;

  // Releases what Serve has created; the thread ends.
  virtual void Close() = 0;

  // Ends Serve soon, now or when it is called next. Any thread.
  virtual void Interrupt() = 0;
};

// A failure is logged once, and again only if its reason changes or it is over.
class ServiceLoop {
 public:
  // The names of the log's events for a failure and its end.
  struct Events {
    std::string_view Failing, Working;
  };

  // Starts the thread. The task and the log must outlive the object.
  ServiceLoop(String mailbox, Events events, ServiceLog& log, ServiceTask& task);
  ServiceLoop(const ServiceLoop&) = delete;
  ServiceLoop& operator=(const ServiceLoop&) = delete;

  // Waits until the work under way is finished.
  ~ServiceLoop();

  // For other threads. RequestStop and Wake don't wait.
  void RequestStop();
  void Wake();                               // ends Pause, or the next one
  bool Failing() const { return failing_; }  // the last attempt failed
  bool Alive() const;  // false if nothing was reported for longer than the present work can take

  // For the task, on the loop's thread. Fail and Succeed tell what became of the work.
  void Fail(const String& reason);
  void Succeed();
  void ResetBackOff() { backOff_.Succeeded(); }
  void WorkingFor(std::chrono::minutes longest);  // until the next call
  void Pause(std::chrono::milliseconds time);     // until Wake or RequestStop
  bool Stopping();

 private:
  void Run();
  void BackOffPause();

  const String mailbox_;
  const Events events_;
  ServiceLog& log_;
  ServiceTask& task_;
  std::atomic<bool> failing_ = false;
  std::atomic<std::chrono::steady_clock::rep> quietUntil_;

  String reason_;  // of the present failure
  BackOff backOff_;

  std::mutex mutex_;  // for what follows
  std::condition_variable wake_;
  bool stopping_ = false;
  bool woken_ = false;

  std::thread thread_;  // last, since it uses all others
};

}  // namespace Gateway
