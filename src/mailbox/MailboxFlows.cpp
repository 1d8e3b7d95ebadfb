#include "src/mailbox/MailboxFlows.h"

#include "platform/StoredNames.h"
#include "platform/contracts/HostObjects.h"
#include "src/mailbox/MailboxRecords.h"
#include "src/mailbox/ProjectEmailSettings.h"
#include "src/mailbox/RegistryValues.h"
#include "src/services/modMain.h"
#include "src/services/modResource.h"

namespace TvEmailServices {
namespace {

bool IsComplete(const Session& session) {
  if (!session) return Refuse(TextNumber::kNoSession);
  if (!session.HasSendLogon()) return Refuse(TextNumber::kNoSendLogon);
  if (!session.HasUser()) return Refuse(TextNumber::kNoUserInSession);
  return true;
}

// Reads all five strings of the session, in this order, also those that its transport doesn't need.
bool WriteSessionSettings(const String& projectPath, const Session& session) {
  const String transport = session.Transport();
  const String mapiProfile = session.MAPIProfile();
  const String hostName = session.HostName();
  const String address = session.Address();
  const String realName = session.RealName();
  return WriteProjectEmailSettings(projectPath, transport, mapiProfile, hostName, address, realName);
}

void PutSettingsBack(const String& projectPath, const ProjectEmailSettings& old, bool valid) {
  if (!valid || !WriteProjectEmailSettings(projectPath, old.TransportName, old.MAPIProfile,
                                           old.HostName.ToString(), old.EMailAddress, old.RealName)) {
    ShowResourceMessage(TextNumber::kSettingsNotRestored, {});
  }
}

}  // namespace

bool UpdateMailBox(const String& mailBoxName, const ObjectRef& sess, const String& projectPath,
                   const String& userId, const String& password, bool addMode) try {
  if (addMode) return AddMailBox(mailBoxName, sess, projectPath, userId, password);
  if (projectPath.empty() || userId.empty()) return ResaveMailBoxSettings(mailBoxName, sess);
  return ChangeMailBox(mailBoxName, sess, projectPath, userId, password);
} catch (...) {
  return ReportFailure();
}

bool AddMailBox(const String& mailBoxName, const ObjectRef& sess, const String& projectPath,
                const String& userId, const String& password) try {
  const Session session(sess);
  if (!IsComplete(session)) return false;
  // If the add fails, only a section that it has made may be deleted: none of a project that already had one,
  // and none of another project that the key may still name.
  const String mayDeleteFrom = MayHoldEmailSettings(projectPath) ? String() : projectPath;
  if (WriteMailBoxRecord(projectPath, userId, password, mailBoxName) &&
      WriteSessionSettings(projectPath, session)) {
    return true;
  }
  DeleteMailBox(mailBoxName, true, mayDeleteFrom);
  return false;
} catch (...) {
  return ReportFailure();
}

bool ChangeMailBox(const String& mailBoxName, const ObjectRef& sess, const String& projectPath,
                   const String& userId, const String& password) try {
  const Session session(sess);
  if (!IsComplete(session)) return false;

  String oldProjectPath, oldUserId, oldEncodedPassword;
  const bool hadRecord = ReadMailBoxRecord(oldProjectPath, oldUserId, oldEncodedPassword, mailBoxName);

  const bool recordWritten = WriteMailBoxRecord(projectPath, userId, password, mailBoxName);
  ProjectEmailSettings oldSettings;
  bool hadSettings = false;
  if (recordWritten) {
    hadSettings = ReadProjectEmailSettings(projectPath, oldSettings, false);
    if (WriteSessionSettings(projectPath, session)) return true;
  }

  if (!hadRecord || !RestoreMailBoxRecord(oldProjectPath, oldUserId, oldEncodedPassword, mailBoxName))
    ShowResourceMessage(TextNumber::kRecordNotRestored, {});
  if (recordWritten) PutSettingsBack(projectPath, oldSettings, hadSettings);
  return false;
} catch (...) {
  return ReportFailure();
}

bool ResaveMailBoxSettings(const String& mailBoxName, const ObjectRef& sess) try {
  const Session session(sess);
  if (!IsComplete(session)) return false;

  const String projectPath = GetMailBoxProjectPath(mailBoxName, true);
  if (projectPath.empty()) return Refuse(TextNumber::kProjectFileUnreadable);

  ProjectEmailSettings oldSettings;
  const bool hadSettings = ReadProjectEmailSettings(projectPath, oldSettings, false);
  if (WriteSessionSettings(projectPath, session)) return true;
  PutSettingsBack(projectPath, oldSettings, hadSettings);
  return false;
} catch (...) {
  return ReportFailure();
}

bool DeleteMailBox(const String& mailBoxName, bool removeRecord, const std::optional<String>& onlyFrom) try {
  bool done = true;
  String sectionText, keyText;
  if (!DeleteProjectEmailSettings(mailBoxName, false, onlyFrom)) {
    sectionText = LoadTvResourceString(TextNumber::kSectionNotRemoved);
    done = false;
  }
  if (removeRecord && !DeleteRegKey(RegistryPath::kMailBoxes, Hive::LocalMachine, mailBoxName, false)) {
    keyText = LoadTvResourceString(TextNumber::kRecordNotRemoved);
    done = false;
  }
  if (!done) ShowResourceMessage(TextNumber::kNotDeleted, sectionText + u"  " + keyText);
  return done;
} catch (...) {
  return ReportFailure(TextNumber::kNotDeleted);
}

}  // namespace TvEmailServices
