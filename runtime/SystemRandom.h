// SystemRandom: a thread's source of random values.
#pragma once

#include <random>

#include "platform/Services.h"

namespace Runtime {

// One generator, seeded from the system's entropy when it is made and at every Seed. The number is mixed in:
// nobody who guesses it, or who tries all the few that a caller may use, can tell the values that follow.
class SystemRandom : public Platform::RandomSource {
 public:
  SystemRandom() { Seed(0); }
  void Seed(double number) override;
  double Next() override;

 private:
  std::mt19937_64 engine_;
};

}  // namespace Runtime
