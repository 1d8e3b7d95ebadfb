#include "siblings/TvGeneralServices/LibraryEntry.h"

#include "platform/Component.h"
#include "platform/Object.h"
#include "siblings/TvGeneralServices/Files.h"
#include "siblings/TvGeneralServices/General.h"
#include "siblings/TvGeneralServices/RegUtil.h"
#include "siblings/TvGeneralServices/RegValue.h"

namespace TvGeneralServices {

std::atomic<long> liveObjects = 0;

namespace {

template <class T>
ObjectRef Make() {
  return std::make_shared<T>();
}

constexpr ClassDescription kClasses[] = {
    {u"RegUtil",
     "{7B1D9E24-38C6-4F0A-A5B7-2C64D1E83001}"_identity,
     u"1.0",
     u"creatable",
     &Make<RegUtil>,
     nullptr,
     {}},
    {u"RegValue",
     "{7B1D9E24-38C6-4F0A-A5B7-2C64D1E83002}"_identity,
     u"1.0",
     u"creatable",
     &Make<RegValue>,
     nullptr,
     {}},
    {u"Files",
     "{7B1D9E24-38C6-4F0A-A5B7-2C64D1E83003}"_identity,
     u"1.0",
     u"creatable",
     &Make<Files>,
     nullptr,
     {}},
    {u"General",
     "{7B1D9E24-38C6-4F0A-A5B7-2C64D1E83004}"_identity,
     u"1.0",
     u"creatable",
     &Make<General>,
     nullptr,
     {}},
};

constexpr ComponentDescription kLibrary = {
    u"TvGeneralServices", u"Talvane general services", u"", u"Apartment", kClasses, nullptr, nullptr,
    &liveObjects};

}  // namespace
}  // namespace TvGeneralServices

PLATFORM_COMPONENT_EXPORTS(TvGeneralServices::kLibrary)
