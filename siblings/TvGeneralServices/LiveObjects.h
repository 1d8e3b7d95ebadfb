// LiveObjects: the count of this library's objects that are alive.
#pragma once

#include <atomic>

namespace TvGeneralServices {

extern std::atomic<long> liveObjects;

}  // namespace TvGeneralServices
