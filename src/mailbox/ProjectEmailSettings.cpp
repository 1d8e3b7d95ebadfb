#include "src/mailbox/ProjectEmailSettings.h"

#include "platform/StoredNames.h"
#include "src/mailbox/MailboxRecords.h"
#include "src/services/modComponents.h"
#include "src/services/modMain.h"
#include "src/services/modResource.h"

namespace TvEmailServices {
namespace {

bool RefuseSettings(std::int32_t reason) {
  ShowResourceMessage(TextNumber::kSettingsRefused, LoadTvResourceString(reason));
  return false;
}

}  // namespace

bool ReadProjectEmailSettings(const String& projectPath, ProjectEmailSettings& settings, bool report) try {
  const ProjectFile file = GetProjectFile(projectPath, false);
  if (!file) return false;
  settings.TransportNumber = file.KeyValue(ProjectSection::kRead, SendingValue::kTransportId).ToInt32();
  switch (settings.TransportNumber) {
    case TransportId::kMapi:
      settings.TransportName = LoadTvResourceString(TextNumber::kMapiName);
      settings.MAPIProfile = file.KeyValue(ProjectSection::kRead, SendingValue::kMapiProfile).ToString();
      return !settings.MAPIProfile.empty();
    case TransportId::kSmtp:
      settings.TransportName = LoadTvResourceString(TextNumber::kSmtpName);
      settings.RealName = file.KeyValue(ProjectSection::kRead, SendingValue::kRealName).ToString();
      settings.EMailAddress = file.KeyValue(ProjectSection::kRead, SendingValue::kAddress).ToString();
      settings.HostName = file.KeyValue(ProjectSection::kRead, SendingValue::kHostName);
      return !settings.EMailAddress.empty() && !settings.HostName.ToString().empty();
    default:
      return false;
  }
} catch (...) {
  if (report) ShowErrorMessageV(CurrentFailure(), TextNumber::kSettingsUnreadable, {projectPath});
  return false;
}

bool WriteProjectEmailSettings(const String& projectPath, const String& transportName,
                               const String& mapiProfile, const String& hostName, const String& eMailAddress,
                               const String& realName) try {
  const ProjectFile file = GetProjectFile(projectPath, true);
  if (!file) return RefuseSettings(TextNumber::kProjectFileUnreadable);
  if (EqualsIgnoreCase(transportName, LoadTvResourceString(TextNumber::kMapiName))) {
    if (mapiProfile.empty()) return RefuseSettings(TextNumber::kMailboxWithoutProfile);
    file.CreateKey(ProjectSection::kWritten, SendingValue::kTransportId,
                   Value(TransportId::kMapi).ToString());
    file.CreateKey(ProjectSection::kWritten, SendingValue::kMapiProfile, mapiProfile);
  } else if (EqualsIgnoreCase(transportName, LoadTvResourceString(TextNumber::kSmtpName))) {
    if (hostName.empty()) return RefuseSettings(TextNumber::kMailboxWithoutHost);
    if (eMailAddress.empty()) return RefuseSettings(TextNumber::kMailboxWithoutAddress);
    file.CreateKey(ProjectSection::kWritten, SendingValue::kTransportId,
                   Value(TransportId::kSmtp).ToString());
    file.CreateKey(ProjectSection::kWritten, SendingValue::kHostName, hostName);
    file.CreateKey(ProjectSection::kWritten, SendingValue::kRealName, realName);
    file.CreateKey(ProjectSection::kWritten, SendingValue::kAddress, eMailAddress);
  } else {
    return RefuseSettings(TextNumber::kTransportUnknown);
  }
  file.Save();
  return true;
} catch (...) {
  return ReportFailure();
}

bool DeleteProjectEmailSettings(const String& mailBoxName, bool report,
                                const std::optional<String>& onlyFrom) try {
  const String projectPath = GetMailBoxProjectPath(mailBoxName, report);
  const ProjectFile file = GetNamedProjectFile(projectPath, report);
  if (!file) return false;
  if (onlyFrom && projectPath != Trim(*onlyFrom)) return true;
  if (!file.HasSection(ProjectSection::kWritten)) return true;
  if (!file.DeleteSection(ProjectSection::kWritten)) return false;
  file.Save();
  return true;
} catch (...) {
  if (report) ReportFailure(TextNumber::kSectionNotRemoved);
  return false;
}

bool MayHoldEmailSettings(const String& projectPath) try {
  const ProjectFile file = GetProjectFile(projectPath, false);
  return !file || file.HasSection(ProjectSection::kWritten);
} catch (...) {
  return true;
}

ProjectFile GetProjectFile(const String& projectPath, bool report) try {
  const Files files = GetFiles(report);
  return files ? files.RetrieveTVSFile(projectPath) : ProjectFile();
} catch (...) {
  if (report) ShowErrorMessage(CurrentFailure(), 0, {});
  return {};
}

ProjectFile GetNamedProjectFile(const String& projectPath, bool report) try {
  return projectPath.empty() ? ProjectFile() : GetProjectFile(projectPath, report);
} catch (...) {
  if (report) ShowErrorMessage(CurrentFailure(), TextNumber::kProjectFileUnreadable, {});
  return {};
}

}  // namespace TvEmailServices
