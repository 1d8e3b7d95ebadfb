#include "runtime/BusyTimeout.h"

#include <atomic>

namespace Runtime {
namespace {

std::atomic<std::chrono::milliseconds::rep> milliseconds = 10'000;

}  // namespace

std::chrono::milliseconds BusyTimeout() {
  return std::chrono::milliseconds(milliseconds);
}

void SetBusyTimeout(std::chrono::milliseconds timeout) {
  milliseconds = timeout.count();
}

}  // namespace Runtime
