// Interrupting: how long a wait goes on after it was interrupted.
#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

namespace Tests {

// Waits on this thread and interrupts on another one. Returns how many sleeps of 10 ms the other one finished
// between the interruption and the end of the wait: on a busy machine these take longer, too.
inline int SleepsAfter(const std::function<void()>& interrupt, const std::function<void()>& wait) {
  std::atomic<bool> ended = false;
  int sleeps = 0;
  {
    const std::jthread other([&] {
      for (interrupt(); !ended; ++sleeps) std::this_thread::sleep_for(std::chrono::milliseconds(10));
    });
    wait();
    ended = true;
  }
  return sleeps - 1;
}

// Half of what is promised at most: a second for all that an interruption ends.
inline constexpr int kSoon = 50;

}  // namespace Tests
