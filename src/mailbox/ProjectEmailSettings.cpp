#include "src/mailbox/ProjectEmailSettings.h"

#include "src/mailbox/MailBoxRecords.h"
#include "src/services/modComponents.h"
#include "src/services/modMain.h"
#include "src/services/modResource.h"

namespace TvEmailServices {
namespace {

// A project file takes both spellings for the one section; reads use the first, everything else the second.
constexpr StringView kSectionInReads = u"Email";
constexpr StringView kSection = u"EMail";

constexpr std::int32_t kMapi = 1;
constexpr std::int32_t kSmtp = 2;

constexpr std::int32_t kMapiName = 9100;
constexpr std::int32_t kSmtpName = 9101;

bool RefuseSettings(std::int32_t reason) {
  ShowResourceMessage(10019, LoadTvResourceString(reason));
  return false;
}

}  // namespace

bool ReadProjectEmailSettings(const String& projectPath, ProjectEmailSettings& settings, bool report) try {
  const ProjectFile file = GetProjectFile(projectPath, false);
  if (!file) return false;
  settings.TransportNumber = file.KeyValue(kSectionInReads, u"TransportID").ToInt32();
  switch (settings.TransportNumber) {
    case kMapi:
      settings.TransportName = LoadTvResourceString(kMapiName);
      settings.MAPIProfile = file.KeyValue(kSectionInReads, u"MAPIProfile").ToString();
      return !settings.MAPIProfile.empty();
    case kSmtp:
      settings.TransportName = LoadTvResourceString(kSmtpName);
      settings.RealName = file.KeyValue(kSectionInReads, u"RealName").ToString();
      settings.EMailAddress = file.KeyValue(kSectionInReads, u"EMailAddress").ToString();
      settings.HostName = file.KeyValue(kSectionInReads, u"SMTPHostName");
      return !settings.EMailAddress.empty() && !settings.HostName.ToString().empty();
    default:
      return false;
  }
} catch (...) {
  if (report) ShowErrorMessageV(CurrentFailure(), 10051, {projectPath});
  return false;
}

bool WriteProjectEmailSettings(const String& projectPath, const String& transportName,
                               const String& mapiProfile, const String& hostName, const String& eMailAddress,
                               const String& realName) try {
  const ProjectFile file = GetProjectFile(projectPath, true);
  if (!file) return RefuseSettings(10048);
  if (EqualsIgnoreCase(transportName, LoadTvResourceString(kMapiName))) {
    if (mapiProfile.empty()) return RefuseSettings(10018);
    file.CreateKey(kSection, u"TransportID", u"1");
    file.CreateKey(kSection, u"MAPIProfile", mapiProfile);
  } else if (EqualsIgnoreCase(transportName, LoadTvResourceString(kSmtpName))) {
    if (hostName.empty()) return RefuseSettings(10021);
    if (eMailAddress.empty()) return RefuseSettings(10020);
    file.CreateKey(kSection, u"TransportID", u"2");
    file.CreateKey(kSection, u"SMTPHostName", hostName);
    file.CreateKey(kSection, u"RealName", realName);
    file.CreateKey(kSection, u"EMailAddress", eMailAddress);
  } else {
    return RefuseSettings(10022);
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
  if (!file.HasSection(kSection)) return true;
  if (!file.DeleteSection(kSection)) return false;
  file.Save();
  return true;
} catch (...) {
  if (report) ReportFailure(10058);
  return false;
}

bool MayHoldEmailSettings(const String& projectPath) try {
  const ProjectFile file = GetProjectFile(projectPath, false);
  return !file || file.HasSection(kSection);
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
  if (report) ShowErrorMessage(CurrentFailure(), 10048, {});
  return {};
}

}  // namespace TvEmailServices
