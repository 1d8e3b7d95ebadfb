// SystemRandom: random values from the operating system. One object for each thread.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "platform/Services.h"

namespace Runtime {

// Random bytes are drawn in blocks. Seed discards the rest of the block; its number has no influence on the
// values that follow, so that they can't be predicted from it. Raises 57 if the system gives no random bytes.
class SystemRandom : public Platform::RandomSource {
 public:
  void Seed(double number) override;
  double Next() override;

 private:
  std::array<std::uint64_t, 32> block_{};  // 256 bytes, the most that getentropy gives at once
  std::size_t used_ = block_.size();
};

}  // namespace Runtime
