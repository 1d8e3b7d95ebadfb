// RandomDraws: the seedings and draws of the encoders, on the calling thread's random source.
#pragma once

#include <cstdint>

namespace TvEmailServices {

// From the hour of the day times the month of the year, with the second of the minute written behind it:
// 14:05:09 in March gives 429.
void SeedFromHourMonthAndSecond();

// From the present date and time, to the millisecond.
void SeedFromPresentMoment();

// The whole number nearest to a value drawn from offset to offset + scale, both of which may come up; a tie
// goes to the even one.
std::int32_t DrawWholeNumber(std::int32_t scale, std::int32_t offset);

}  // namespace TvEmailServices
