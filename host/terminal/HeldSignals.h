// HeldSignals: while the terminal is in a mode of the program's own, signals arrive only while the program
// waits for input, and take effect only once the mode is restored.
#pragma once

#include <signal.h>

#include <vector>

namespace Host {

// Blocks the signals that end or stop the program, and those given. One object at a time, one thread.
class HeldSignals {
 public:
  explicit HeldSignals(std::vector<int> further = {});
  // Restores the signals' actions and the mask; a signal that arrived takes effect.
  ~HeldSignals();
  HeldSignals(const HeldSignals&) = delete;
  HeldSignals& operator=(const HeldSignals&) = delete;

  // The mask for ppoll, which a held signal interrupts. Of several signals, each interrupts a ppoll of its
  // own.
  const sigset_t& MaskOfWaiting() const { return mask_; }

  // The signal that interrupted the wait, 0 if none did.
  int Arrived() const;

  // Lets the signal that arrived take effect: the program may end or stop here. Returns when it continues,
  // and holds the signals again.
  void Deliver();

 private:
  void Hold();
  void Release();

  std::vector<int> signals_;
  std::vector<struct sigaction> actions_;
  sigset_t mask_{};
};

}  // namespace Host
