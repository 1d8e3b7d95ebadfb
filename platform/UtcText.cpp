#include "platform/UtcText.h"

#include <ctime>

namespace Platform {

std::string UtcText(std::chrono::sys_seconds time) {
  const std::time_t seconds = time.time_since_epoch().count();
  std::tm utc{};
  char text[40];
  gmtime_r(&seconds, &utc);
  return {text, std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &utc)};
}

}  // namespace Platform
