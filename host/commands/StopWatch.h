// StopWatch: interrupts work soon after a stop signal, also while the work waits for a server.
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <utility>

#include "gateway/sources/StopSignal.h"

namespace Host {

// Gateway::CatchStopSignals comes first.
class StopWatch {
 public:
  // interrupt is called on another thread, at most once, and not after the end of this object.
  explicit StopWatch(std::function<void()> interrupt)
      : thread_([this, interrupt = std::move(interrupt)](const std::stop_token& ended) {
          std::unique_lock lock(mutex_);
          while (!Gateway::StopWanted() && !ended.stop_requested())
            wake_.wait_for(lock, ended, std::chrono::milliseconds(200), [] { return false; });
          if (Gateway::StopWanted()) interrupt();
        }) {}

 private:
  std::mutex mutex_;
  std::condition_variable_any wake_;
  std::jthread thread_;
};

}  // namespace Host
