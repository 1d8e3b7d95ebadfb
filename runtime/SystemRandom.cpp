#include "runtime/SystemRandom.h"

#include <unistd.h>

#include "platform/Failure.h"

namespace Runtime {

void SystemRandom::Seed(double) {
  used_ = block_.size();
}

double SystemRandom::Next() {
  if (used_ == block_.size()) {
    if (getentropy(block_.data(), sizeof block_) != 0)
      Platform::Raise(Platform::FailureNumber::DeviceFailed, u"the system gives no random bytes");
    used_ = 0;
  }
  return static_cast<double>(block_[used_++] >> 11) * 0x1p-53;
}

}  // namespace Runtime
