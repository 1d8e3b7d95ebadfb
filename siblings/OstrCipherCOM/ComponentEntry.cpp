// The description of the library and its exports.
#include "siblings/OstrCipherCOM/KeyStore.h"
#include "siblings/OstrCipherCOM/OstrCipherCOM.h"

namespace OstrCipherCOM {

std::atomic<long> liveObjects{0};

namespace {

constexpr ClassDescription kClasses[] = {
    NamedClass<OstrCipherCOM>(u"OstrCipherCOM", "{8E4F2B17-6C0A-4D93-B5E1-27A9C3D86001}"_guid, u"1.0"),
    NamedClass<KeyStore>(u"KeyStore", "{8E4F2B17-6C0A-4D93-B5E1-27A9C3D86002}"_guid, u"1.0")};

constexpr ComponentDescription kDescription =
    NamedClasses(u"OstrCipherCOM", u"Talvane crypto component", kClasses, liveObjects);

}  // namespace
}  // namespace OstrCipherCOM

PLATFORM_COMPONENT_EXPORTS(OstrCipherCOM::kDescription)
