// The description of the library and its exports.
#include "siblings/TvResourceServices/Resource.h"

namespace TvResourceServices {

std::atomic<long> liveObjects{0};

namespace {

constexpr ClassDescription kClasses[] = {
    NamedClass<Resource>(u"Resource", "{9C42E81B-70D5-4F13-B6A8-2D94C1F05001}"_guid, u"1.0")};

constexpr ComponentDescription kDescription =
    NamedClasses(u"TvResourceServices", u"Talvane texts by number", kClasses, liveObjects);

}  // namespace
}  // namespace TvResourceServices

PLATFORM_COMPONENT_EXPORTS(TvResourceServices::kDescription)
