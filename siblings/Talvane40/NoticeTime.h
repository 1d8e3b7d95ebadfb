// NoticeTime: the times of notices, in milliseconds since 1970.
#pragma once

#include <chrono>
#include <cstdint>

namespace Talvane40 {

inline constexpr std::int64_t kSecond = 1000;
inline constexpr std::int64_t kMinute = 60 * kSecond;
inline constexpr std::int64_t kHour = 60 * kMinute;
inline constexpr std::int64_t kDay = 24 * kHour;

inline std::int64_t Now() {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

}  // namespace Talvane40
