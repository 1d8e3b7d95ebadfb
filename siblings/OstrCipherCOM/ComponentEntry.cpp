// What the library says of itself, and its exports.
#include "siblings/OstrCipherCOM/KeyStore.h"
#include "siblings/OstrCipherCOM/OstrCipherCOM.h"

namespace OstrCipherCOM {

std::atomic<long> liveObjects{0};

namespace {

template <class Class>
ObjectRef Create() {
  return std::make_shared<Class>();
}

constexpr ClassDescription kClasses[] = {{.Name = u"OstrCipherCOM",
                                          .Id = "{8E4F2B17-6C0A-4D93-B5E1-27A9C3D86001}"_identity,
                                          .Version = u"1.0",
                                          .Attributes = u"",
                                          .Create = Create<OstrCipherCOM>,
                                          .DefaultInterface = nullptr,
                                          .MoreInterfaces = {}},
                                         {.Name = u"KeyStore",
                                          .Id = "{8E4F2B17-6C0A-4D93-B5E1-27A9C3D86002}"_identity,
                                          .Version = u"1.0",
                                          .Attributes = u"",
                                          .Create = Create<KeyStore>,
                                          .DefaultInterface = nullptr,
                                          .MoreInterfaces = {}}};

constexpr ComponentDescription kDescription = {.ProjectName = u"OstrCipherCOM",
                                               .ProjectDescription = u"Talvane crypto component",
                                               .HelpDirectory = u"",
                                               .ThreadingModel = u"Apartment",
                                               .Classes = kClasses,
                                               .TypeLibrary = nullptr,
                                               .Version = nullptr,
                                               .LiveObjects = &liveObjects};

}  // namespace
}  // namespace OstrCipherCOM

PLATFORM_COMPONENT_EXPORTS(OstrCipherCOM::kDescription)
