#include "host/terminal/HeldSignals.h"

#include <utility>

namespace Host {

namespace {

volatile sig_atomic_t arrivedSignal = 0;

}  // namespace

HeldSignals::HeldSignals(std::vector<int> further) : signals_(std::move(further)) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP}) signals_.push_back(signal);
  actions_.resize(signals_.size());
  Hold();
}

HeldSignals::~HeldSignals() {
  Release();
}

int HeldSignals::Arrived() const {
  return arrivedSignal;
}

void HeldSignals::Deliver() {
  Release();
  Hold();
}

void HeldSignals::Hold() {
  arrivedSignal = 0;
  struct sigaction remember {};
  remember.sa_handler = [](int signal) { arrivedSignal = signal; };
  sigemptyset(&remember.sa_mask);
  for (const int signal : signals_) sigaddset(&remember.sa_mask, signal);
  sigprocmask(SIG_BLOCK, &remember.sa_mask, &mask_);
  for (std::size_t i = 0; i < signals_.size(); ++i) sigaction(signals_[i], &remember, &actions_[i]);
}

void HeldSignals::Release() {
  for (std::size_t i = 0; i < signals_.size(); ++i) sigaction(signals_[i], &actions_[i], nullptr);
  sigprocmask(SIG_SETMASK, &mask_, nullptr);
  const int signal = std::exchange(arrivedSignal, 0);
  if (signal != 0) raise(signal);
}

}  // namespace Host
