#include "src/outbound/MapiProfiles.h"

#include "platform/Failure.h"
#include "platform/StoredNames.h"
#include "src/services/modComponents.h"
#include "src/services/modMain.h"

namespace TvEmailServices {
namespace {

// The key whose sub keys are the profiles. It depends on the platform.
StringView ProfilesPath(StringView platform) {
  return platform == u"NT" ? RegistryPath::kMapiProfilesOfNt : RegistryPath::kMapiProfiles;
}

}  // namespace

bool GetMAPIProfiles(Value& collection) try {
  const General general = GetGeneral(false);
  if (!general) return false;
  Value strings[] = {String(), String(), String(), String(), String(), String()};
  if (!general.SystemInfo(strings)) return false;
  const String platform = strings[General::PlatformString].ToString();
  const RegUtil registry = GetRegUtil(Hive::CurrentUser, ProfilesPath(platform), false);
  return collection.IsArray() && registry && registry.EnumKeys(collection);
} catch (...) {
  return ReportFailure();
}

}  // namespace TvEmailServices
