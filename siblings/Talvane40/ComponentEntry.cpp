// The description of the library and its exports.
#include "siblings/Talvane40/Application.h"
#include "siblings/Talvane40/MailIntake.h"
#include "siblings/Talvane40/NoticeQueue.h"
#include "siblings/Talvane40/ProjectAdministration.h"

namespace Talvane40 {

std::atomic<long> liveObjects{0};

namespace {

constexpr ClassDescription kClasses[] = {
    NamedClass<Application>(u"TalvaneApplication", TalvaneApplicationClass, u"4.0"),
    NamedClass<ApplicationFactory>(u"TalvaneApplicationFactory", TalvaneApplicationFactoryClass, u"4.0"),
    NamedClass<ProjectAdministration>(u"ProjectAdministration", "{0E7A0C52-6B5D-4E38-9C0B-5D4F5B6E4003}"_guid,
                                      u"4.0"),
    NamedClass<MailIntake>(u"MailIntake", "{0E7A0C52-6B5D-4E38-9C0B-5D4F5B6E4004}"_guid, u"4.0"),
    NamedClass<NoticeQueue>(u"NoticeQueue", "{0E7A0C52-6B5D-4E38-9C0B-5D4F5B6E4005}"_guid, u"4.0")};

constexpr ComponentDescription kDescription =
    NamedClasses(u"Talvane40", u"Talvane projects", kClasses, liveObjects);

}  // namespace
}  // namespace Talvane40

PLATFORM_COMPONENT_EXPORTS(Talvane40::kDescription)
