#include "src/services/modComponents.h"

#include "platform/Services.h"
#include "platform/StoredNames.h"
#include "src/services/IgnoreFailure.h"
#include "src/services/ResourceObjects.h"
#include "src/services/modMain.h"

namespace TvEmailServices {
namespace {

constexpr const char16_t* kGeneralServicesFile = u"TvGeneralServices.Dll";

void ReportMissing(StringView fileName) {
  ShowResourceMessageV(TextNumber::kComponentMissing, {Value(fileName)});
}

// An object of the project library, by its interface. Raises 429 also if the object lacks the interface.
template <class Interface>
std::shared_ptr<Interface> CreateBound(const Guid& classId) {
  auto object = std::dynamic_pointer_cast<Interface>(Services().CreateByClass(classId));
  if (!object) Raise(FailureNumber::CannotCreate);
  return object;
}

}  // namespace

ObjectRef GetComponent(const String& programmaticName, bool report, const String& fileName) {
  ObjectRef object;
  IgnoreFailure([&] { object = Services().CreateByName(programmaticName); });
  if (!object && report) ReportMissing(fileName.empty() ? programmaticName : fileName);
  return object;
}

RegValue GetRegValue(bool report) {
  return RegValue(GetComponent(u"TvGeneralServices.RegValue", report, kGeneralServicesFile));
}

Files GetFiles(bool report) {
  return Files(GetComponent(u"TvGeneralServices.Files", report, kGeneralServicesFile));
}

General GetGeneral(bool report) {
  return General(GetComponent(u"TvGeneralServices.General", report, kGeneralServicesFile));
}

RegUtil GetRegUtil(Hive hive, StringView path, bool report) {
  try {
    const RegUtil registry(GetComponent(u"TvGeneralServices.RegUtil", report, kGeneralServicesFile));
    if (!registry) return {};
    if (!registry.SetCurrHive(hive)) {
      if (report) ShowResourceMessageV(TextNumber::kHiveRefused, {Value(String())});
      return {};
    }
    if (!registry.SetCurrPath(path)) {
      if (report) ShowResourceMessageV(TextNumber::kPathRefused, {Value(path)});
      return {};
    }
    return registry;
  } catch (...) {
    if (report) ShowErrorMessage(CurrentFailure(), 0, {});
    return {};
  }
}

Resource GetResourceObject(bool report) {
  const Resource resource = CreateResourceObject();
  if (!resource && report) ReportMissing(ResourceServicesFile);
  return resource;
}

Resource GetComResourceObject(bool report) {
  const Resource resource = CreateComResourceObject();
  if (!resource && report) ReportMissing(ResourceServicesFile);
  return resource;
}

std::shared_ptr<TalvaneApplication> GetTalvaneApplication(bool report) {
  std::shared_ptr<TalvaneApplication> application;
  const bool created =
      IgnoreFailure([&] { application = CreateBound<TalvaneApplication>(TalvaneApplicationClass); });
  if (!created) {
    IgnoreFailure([&] {
      const auto factory = CreateBound<TalvaneApplicationFactory>(TalvaneApplicationFactoryClass);
      Boolean shared = True;
      application = factory->CreateApplication(shared);
    });
  }
  if (!application && report) ReportMissing(u"Talvane40.Dll");
  return application;
}

}  // namespace TvEmailServices
