#include "runtime/Patience.h"

#include <atomic>

namespace Runtime {
namespace {

std::atomic<std::chrono::milliseconds::rep> milliseconds = 10'000;

}  // namespace

std::chrono::milliseconds Patience() {
  return std::chrono::milliseconds(milliseconds);
}

void SetPatience(std::chrono::milliseconds patience) {
  milliseconds = patience.count();
}

}  // namespace Runtime
