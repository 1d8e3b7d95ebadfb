// The description of the library and its exports.
#include "siblings/TvGeneralServices/Files.h"
#include "siblings/TvGeneralServices/General.h"
#include "siblings/TvGeneralServices/RegUtil.h"
#include "siblings/TvGeneralServices/RegValue.h"

namespace TvGeneralServices {

std::atomic<long> liveObjects{0};

namespace {

constexpr ClassDescription kClasses[] = {
    NamedClass<RegUtil>(u"RegUtil", "{7B1D9E24-38C6-4F0A-A5B7-2C64D1E83001}"_guid, u"1.0"),
    NamedClass<RegValue>(u"RegValue", "{7B1D9E24-38C6-4F0A-A5B7-2C64D1E83002}"_guid, u"1.0"),
    NamedClass<Files>(u"Files", "{7B1D9E24-38C6-4F0A-A5B7-2C64D1E83003}"_guid, u"1.0"),
    NamedClass<General>(u"General", "{7B1D9E24-38C6-4F0A-A5B7-2C64D1E83004}"_guid, u"1.0")};

constexpr ComponentDescription kDescription =
    NamedClasses(u"TvGeneralServices", u"Talvane general services", kClasses, liveObjects);

}  // namespace
}  // namespace TvGeneralServices

PLATFORM_COMPONENT_EXPORTS(TvGeneralServices::kDescription)
