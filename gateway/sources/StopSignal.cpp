#include "gateway/sources/StopSignal.h"

#include <csignal>

namespace Gateway {
namespace {

volatile std::sig_atomic_t stopWanted = 0;

void OnSignal(int) {
  stopWanted = 1;
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
  return stopWanted != 0;
}

}  // namespace Gateway
