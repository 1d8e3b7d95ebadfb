#include "src/mailbox/ProjectCheck.h"

#include "platform/CheckedArithmetic.h"
#include "platform/StoredNames.h"
#include "src/mailbox/MailboxRecords.h"
#include "src/services/modComponents.h"
#include "src/services/modMain.h"

namespace TvEmailServices {
bool CheckProjectCredentials(const String& projectPath, const String& userId, const String& password,
                             String& mailBoxName, const ObjectRef& /*sess*/) try {
  const Files files = GetFiles(true);
  if (!files) return false;
  files.CheckTVSFilePath(projectPath);
  if (userId.empty()) return Refuse(TextNumber::kNoUserId);

  const std::shared_ptr<TalvaneApplication> application = GetTalvaneApplication(true);
  if (!application) return false;
  const std::shared_ptr<Project> project = application->OpenProject(projectPath, 1, userId, password, 0, 3);
  if (!project) return Refuse(TextNumber::kLogonRefused);

  // A mailbox that has the project's name already would find its own key.
  const String projectName = project->GetName();
  if (!EqualsIgnoreCase(projectName, mailBoxName) && !IsMailBoxNameFree(projectName)) return false;
  mailBoxName = projectName;
  return bool(project->IsMailBoxAllowed()) || Refuse(TextNumber::kMailboxNotAllowed);
} catch (...) {
  return ReportFailure();
}

bool IsMailBoxNameFree(const String& mailBoxName) try {
  const RegUtil registry = GetRegUtil(Hive::LocalMachine, RegistryPath::kMailBoxes, true);
  Value collection{Array()};
  if (!registry || !registry.EnumKeys(collection)) return Refuse(TextNumber::kMailboxesNotListed);
  if (collection.IsEmpty() || (collection.IsObject() && !collection.ToObject()))
    return Refuse(TextNumber::kMailboxesNotListed);

  const Array& names = collection.ToArray();
  const auto count = Narrow<std::int16_t>(names.size());
  for (std::int32_t position = 1; position <= count; ++position) {
    if (EqualsIgnoreCase(names[static_cast<std::size_t>(position) - 1].ToString(), mailBoxName))
      return Refuse(TextNumber::kMailboxExists);
  }
  return true;
} catch (...) {
  return ReportFailure();
}

}  // namespace TvEmailServices
