// UtcText: a point of time as text (RFC 3339), for data that programs read.
#pragma once

#include <chrono>
#include <string>

namespace Platform {

// "2024-05-01T09:30:00Z". Texts of the years 1000 to 9999 sort as their times do.
std::string UtcText(std::chrono::sys_seconds time);

}  // namespace Platform
