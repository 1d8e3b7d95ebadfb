// Interruption: a request of another thread to end a wait.
#pragma once

#include <atomic>
#include <chrono>

#include "runtime/DurableFile.h"

namespace Gateway {

class Interruption {
 public:
  // Raises 57 if the process has too many open files.
  Interruption();

  // Any thread; never blocks. It is final.
  void Set();
  bool IsSet() const { return set_; }

  // Waits until the descriptor is ready for the events of poll(2); -1 waits for no descriptor. Returns true
  // if it is ready, false after the time or when Set was or is called.
  bool Wait(int descriptor, short events, std::chrono::milliseconds longest) const;

  // The same, but Set doesn't end it.
  static bool WaitUninterrupted(int descriptor, short events, std::chrono::milliseconds longest);

 private:
  std::atomic<bool> set_ = false;
  Runtime::Descriptor event_;
};

}  // namespace Gateway
