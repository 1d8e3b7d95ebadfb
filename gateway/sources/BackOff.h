// BackOff: the pause before a source that failed is tried again.
#pragma once

#include <chrono>
#include <cstddef>

namespace Gateway {

inline constexpr std::chrono::milliseconds kShortestBackOff = std::chrono::seconds(5);
inline constexpr std::chrono::milliseconds kLongestBackOff = std::chrono::minutes(15);

// The pause after this number of failures in a row: 0 without a failure, 5 s after the first one, doubled
// with each further one, up to 15 minutes. The random number, from 0 up to 1, shortens it by up to half, so
// that many mailboxes of a server don't all connect at once when it is available again. Pure.
std::chrono::milliseconds BackOffTime(std::size_t failures, double random);

// Counts the failures of one source.
class BackOff {
 public:
  void Succeeded() { failures_ = 0; }
  void Failed() { ++failures_; }
  std::size_t Failures() const { return failures_; }
  std::chrono::milliseconds Pause(double random) const { return BackOffTime(failures_, random); }

 private:
  std::size_t failures_ = 0;
};

}  // namespace Gateway
