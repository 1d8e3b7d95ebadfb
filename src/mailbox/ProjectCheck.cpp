#include "src/mailbox/ProjectCheck.h"

#include "platform/CheckedArithmetic.h"
#include "src/mailbox/MailBoxRecords.h"
#include "src/services/modComponents.h"
#include "src/services/modMain.h"

namespace TvEmailServices {
namespace {

bool FailWith(std::int32_t number) {
  ShowResourceMessage(number, {});
  return false;
}

}  // namespace

bool CheckProjectCredentials(const String& projectPath, const String& userId, const String& password,
                             String& mailBoxName, const ObjectRef& /*sess*/) try {
  const Files files = GetFiles(true);
  if (!files) return false;
  files.CheckTVSFilePath(projectPath);
  if (userId.empty()) return FailWith(10039);

  const std::shared_ptr<TalvaneApplication> application = GetTalvaneApplication(true);
  if (!application) return false;
  const std::shared_ptr<Project> project = application->OpenProject(projectPath, 1, userId, password, 0, 3);
  if (!project) return FailWith(10001);

  // A mailbox that carries the project's name already would collide with its own key.
  const String projectName = project->GetName();
  if (!EqualsIgnoreCase(projectName, mailBoxName) && !IsMailBoxNameFree(projectName)) return false;
  mailBoxName = projectName;
  return bool(project->IsMailBoxAllowed()) || FailWith(10000);
} catch (...) {
  return ReportFailure();
}

bool IsMailBoxNameFree(const String& mailBoxName) try {
  const RegUtil registry = GetRegUtil(Hive::LocalMachine, String(MailBoxesKey), true);
  Value collection{Array()};
  if (!registry || !registry.EnumKeys(collection)) return FailWith(10036);
  if (collection.IsEmpty() || (collection.IsObject() && !collection.ToObject())) return FailWith(10036);

  const Array& names = collection.ToArray();
  const auto count = Narrow<std::int16_t>(names.size());
  for (std::int32_t position = 1; position <= count; ++position) {
    if (EqualsIgnoreCase(names[static_cast<std::size_t>(position) - 1].ToString(), mailBoxName))
      return FailWith(10037);
  }
  return true;
} catch (...) {
  return ReportFailure();
}

}  // namespace TvEmailServices
