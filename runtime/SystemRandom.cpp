#include "runtime/SystemRandom.h"

#include <unistd.h>

#include <array>
#include <bit>
#include <cstdint>

#include "platform/Failure.h"

namespace Runtime {

void SystemRandom::Seed(double number) {
  std::array<std::uint32_t, 10> words;
  if (getentropy(words.data(), sizeof words) != 0)
    Platform::Raise(Platform::FailureNumber::DeviceFailed, u"the system gives no random bytes");
  const auto bits = std::bit_cast<std::uint64_t>(number);
  words[0] ^= static_cast<std::uint32_t>(bits);
  words[1] ^= static_cast<std::uint32_t>(bits >> 32);
  std::seed_seq mixed(words.begin(), words.end());
  engine_.seed(mixed);
}

double SystemRandom::Next() {
  return static_cast<double>(engine_() >> 11) * 0x1p-53;
}

}  // namespace Runtime
