// SystemRandom: a thread's source of random values.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "platform/Services.h"

namespace Runtime {

// The system's own random bytes, drawn in small blocks. A Seed drops what is left of the block. Its number
// decides nothing: nobody who guesses it, or who tries all the few that a caller may use, can tell the values
// that follow. Raises 57 if the system gives no random bytes.
class SystemRandom : public Platform::RandomSource {
 public:
  void Seed(double number) override;
  double Next() override;

 private:
  std::array<std::uint64_t, 32> block_{};  // as many bytes as the system gives at once
  std::size_t used_ = block_.size();
};

}  // namespace Runtime
