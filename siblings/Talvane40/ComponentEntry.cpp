// What the library says of itself, and its exports.
#include "siblings/Talvane40/Application.h"
#include "siblings/Talvane40/ProjectAdministration.h"

namespace Talvane40 {

std::atomic<long> liveObjects{0};

namespace {

template <class T>
ObjectRef Create() {
  return std::make_shared<T>();
}

constexpr ClassDescription NamedClass(StringView name, const Identity& id, ObjectRef (*create)()) {
  return {.Name = name,
          .Id = id,
          .Version = u"4.0",
          .Attributes = u"",
          .Create = create,
          .DefaultInterface = nullptr,
          .MoreInterfaces = {}};
}

constexpr ClassDescription kClasses[] = {
    NamedClass(u"TalvaneApplication", TalvaneApplicationClass, Create<Application>),
    NamedClass(u"TalvaneApplicationFactory", TalvaneApplicationFactoryClass, Create<ApplicationFactory>),
    NamedClass(u"ProjectAdministration", "{0E7A0C52-6B5D-4E38-9C0B-5D4F5B6E4003}"_identity,
               Create<ProjectAdministration>)};

constexpr ComponentDescription kDescription = {.ProjectName = u"Talvane40",
                                               .ProjectDescription = u"Talvane projects",
                                               .HelpDirectory = u"",
                                               .ThreadingModel = u"Apartment",
                                               .Classes = kClasses,
                                               .TypeLibrary = nullptr,
                                               .Version = nullptr,
                                               .LiveObjects = &liveObjects};

}  // namespace
}  // namespace Talvane40

PLATFORM_COMPONENT_EXPORTS(Talvane40::kDescription)
