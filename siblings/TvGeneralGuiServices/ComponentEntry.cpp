// The description of the library and its exports.
#include "siblings/TvGeneralGuiServices/Help.h"

namespace TvGeneralGuiServices {

std::atomic<long> liveObjects{0};

namespace {

constexpr ClassDescription kClasses[] = {
    NamedClass<Help>(u"Help", "{5A1D7C30-2F64-4B0E-A3C9-81E6B2D75001}"_guid, u"1.0")};

constexpr ComponentDescription kDescription =
    NamedClasses(u"TvGeneralGuiServices", u"Talvane general dialogs and help", kClasses, liveObjects);

}  // namespace
}  // namespace TvGeneralGuiServices

PLATFORM_COMPONENT_EXPORTS(TvGeneralGuiServices::kDescription)
