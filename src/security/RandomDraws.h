// RandomDraws: the seeds and random numbers of the encoders, on the calling thread's random source.
#pragma once

#include <cstdint>

namespace TvEmailServices {

// Seeds with the product of hour and month, followed by the digits of the second: 14:05:09 in March gives
// 429.
void SeedFromHourMonthAndSecond();

// Seeds with the present date and time in milliseconds.
void SeedFromPresentMoment();

// A random whole number from offset to offset + scale, both included: a random value, rounded to the nearest,
// a tie to the even one.
std::int32_t DrawWholeNumber(std::int32_t scale, std::int32_t offset);

}  // namespace TvEmailServices
