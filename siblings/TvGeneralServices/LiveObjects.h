// LiveObjects: the number of objects of this library.
#pragma once

#include <atomic>

namespace TvGeneralServices {

extern std::atomic<long> liveObjects;

}  // namespace TvGeneralServices
