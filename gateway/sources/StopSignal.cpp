#include "gateway/sources/StopSignal.h"

#include <atomic>
#include <csignal>

namespace Gateway {
namespace {

// Written by a signal handler, which may do that with an atomic that has no lock; read by any thread.
std::atomic<bool> stopWanted = false;
static_assert(std::atomic<bool>::is_always_lock_free);

void OnSignal(int) {
  stopWanted = true;
}

}  // namespace

void CatchStopSignals() {
  struct sigaction action = {};
  action.sa_handler = OnSignal;
  // A second signal kills the program. The first one interrupts a blocking read.
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  sigemptyset(&action.sa_mask);
  sigaction(SIGINT, &action, nullptr);
  sigaction(SIGTERM, &action, nullptr);
  std::signal(SIGPIPE, SIG_IGN);
}

bool StopWanted() {
  return stopWanted;
}

}  // namespace Gateway
