#include "gateway/sources/BackOff.h"

#include <algorithm>

namespace Gateway {

std::chrono::milliseconds BackOffTime(std::size_t failures, double random) {
  if (failures == 0) return {};
  // Beyond the doublings that reach the longest pause, a shift would overflow.
  const auto doublings = std::min<std::size_t>(failures - 1, 16);
  const auto whole =
      std::min<std::chrono::milliseconds>(kShortestBackOff * (1L << doublings), kLongestBackOff);
  const double part = 1 - std::clamp(random, 0.0, 1.0) / 2;
  return std::chrono::milliseconds(static_cast<long long>(static_cast<double>(whole.count()) * part));
}

}  // namespace Gateway
