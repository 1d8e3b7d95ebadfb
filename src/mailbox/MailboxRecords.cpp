#include "src/mailbox/MailboxRecords.h"

#include <array>

#include "platform/StoredNames.h"
#include "src/mailbox/RegistryValues.h"
#include "src/security/ComponentSecurity.h"
#include "src/services/modComponents.h"
#include "src/services/modMain.h"
#include "src/services/modResource.h"

namespace TvEmailServices {
namespace {

String RecordKey(const String& mailBoxName) {
  return String(RegistryPath::kMailBoxes) + u"\\" + mailBoxName;
}

// Calls encodedPassword for the value of DBPWD only after the other two values are written.
template <class EncodedPassword>
bool StoreRecord(const String& projectPath, const String& userId, EncodedPassword encodedPassword,
                 const String& mailBoxName) try {
  const RegUtil registry = GetRegUtil(Hive::LocalMachine, RegistryPath::kMailBoxes, true);
  if (!registry) return false;
  if (!registry.AddKey(mailBoxName)) {
    ShowResourceMessageV(TextNumber::kKeyNotAdded, {mailBoxName});
    return false;
  }
  if (!registry.DropToSubKey(mailBoxName)) {
    ShowResourceMessageV(TextNumber::kRecordNotEntered, {mailBoxName});
    return false;
  }
  if (SetRegStringValue(registry, MailBoxValue::kProjectPath, projectPath) &&
      SetRegStringValue(registry, MailBoxValue::kUserId, userId) &&
      SetRegStringValue(registry, MailBoxValue::kPassword, encodedPassword())) {
    return true;
  }
  ShowResourceMessage(TextNumber::kRecordNotStored, {});
  return false;
} catch (...) {
  return ReportFailure();
}

// Reads the values of the record at the cursor, as they are stored.
bool ReadStoredLogon(const RegUtil& registry, String& projectPath, String& userId, String& encodedPassword,
                     String& errorText) try {
  const RegValue holder = GetRegValue(true);
  if (!holder) {
    errorText = LoadTvResourceString(TextNumber::kNoRegValue);
    return false;
  }
  const auto read = [&](StringView name, String& content) {
    holder.SetValueName(name);
    if (!registry.GetValue(holder)) return false;
    content = holder.Value().ToString();
    return true;
  };
  if (read(MailBoxValue::kProjectPath, projectPath) && read(MailBoxValue::kUserId, userId) &&
      read(MailBoxValue::kPassword, encodedPassword))
    return true;
  errorText = LoadTvResourceString(TextNumber::kRecordUnreadable);
  return false;
} catch (...) {
  errorText = CurrentFailure().Description() + u" " + LoadTvResourceString(TextNumber::kRecordUnreadable);
  return false;
}

}  // namespace

bool WriteMailBoxRecord(const String& projectPath, const String& userId, const String& password,
                        const String& mailBoxName) {
  return StoreRecord(
      projectPath, userId, [&] { return ComponentSecurity().Encrypt(password); }, mailBoxName);
}

bool RestoreMailBoxRecord(const String& projectPath, const String& userId, const String& encodedPassword,
                          const String& mailBoxName) {
  return StoreRecord(
      projectPath, userId, [&] { return encodedPassword; }, mailBoxName);
}

bool ReadMailBoxRecord(String& projectPath, String& userId, String& encodedPassword,
                       const String& mailBoxName) try {
  const RegUtil registry = OpenMailBoxKey(mailBoxName, false);
  if (!registry) return false;
  const auto read = [&](StringView name, String& content) {
    Value value;
    if (!GetRegStringValue(registry, name, value, false)) return false;
    content = Trim(value.ToString());
    return true;
  };
  return read(MailBoxValue::kProjectPath, projectPath) && read(MailBoxValue::kUserId, userId) &&
         read(MailBoxValue::kPassword, encodedPassword);
} catch (...) {
  return false;
}

bool ReadMailBoxLogon(const String& mailBoxName, String& projectPath, String& userId, String& encodedPassword,
                      String& errorText) try {
  const RegUtil registry = OpenMailBoxKey(mailBoxName, false);
  if (!registry) {
    errorText = LoadTvResourceString(TextNumber::kKeyNotReached);
    return false;
  }
  return ReadStoredLogon(registry, projectPath, userId, encodedPassword, errorText);
} catch (...) {
  errorText = CurrentFailure().Description();
  return false;
}

String GetMailBoxProjectPath(const String& mailBoxName, bool report) try {
  // A missing key is reported twice: as a path, and as a missing value.
  const RegUtil registry = OpenMailBoxKey(mailBoxName, report);
  Value path;
  return GetRegStringValue(registry, MailBoxValue::kProjectPath, path, report) ? Trim(path.ToString())
                                                                               : String();
} catch (...) {
  if (report) ShowErrorMessage(CurrentFailure(), 0, {});
  return {};
}

RegUtil OpenMailBoxKey(const String& mailBoxName, bool report) {
  return GetRegUtil(Hive::LocalMachine, RecordKey(mailBoxName), report);
}

}  // namespace TvEmailServices
