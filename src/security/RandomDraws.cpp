#include "src/security/RandomDraws.h"

#include "platform/NumberReader.h"
#include "platform/Services.h"

namespace TvEmailServices {

using namespace Platform;

void SeedFromHourMonthAndSecond() {
  const Moment now = Services().Now();
  const String digits = Value(now.Hour * now.Month).ToString() + Value(now.Second).ToString();
  Services().Random().Seed(ReadInt32(digits));
}

void SeedFromPresentMoment() {
  const Moment now = Services().Now();
  const double day = (now.Year * 12 + now.Month) * 31 + now.Day;
  const double second = (now.Hour * 60 + now.Minute) * 60 + now.Second;
  Services().Random().Seed((day * 86400 + second) * 1000 + now.Millisecond);
}

std::int32_t DrawWholeNumber(std::int32_t scale, std::int32_t offset) {
  return RoundToInt32(Services().Random().Next() * scale + offset);
}

}  // namespace TvEmailServices
