// MailBoxRecords: the registry record that ties a mailbox to its project.
//
// A record is a key named after the mailbox below RegistryPath::kMailBoxes of the machine-wide hive, with
// three string values: TVSFilePath, DBUID, and DBPWD, the encoded password, which only ComponentSecurity can
// read. The parent key has to exist. No routine undoes a partial write.
#pragma once

#include "platform/contracts/GeneralServices.h"

namespace TvEmailServices {

using namespace Platform;

// Writes path, user id and the encoded password, in this order; true when all three stand. What fails is
// shown: 10013, 10012 (with the mailbox's name), 10011, or the failure itself. Values written before it
// stand.
bool WriteMailBoxRecord(const String& projectPath, const String& userId, const String& password,
                        const String& mailBoxName);

// The same with a password that is encoded already and is stored as it is.
bool RestoreMailBoxRecord(const String& projectPath, const String& userId, const String& encodedPassword,
                          const String& mailBoxName);

// Reads the three values, trimmed; true when none is missing or empty. Out values that were read before the
// first missing one stay filled. Reports nothing of its own.
bool ReadMailBoxRecord(String& projectPath, String& userId, String& encodedPassword,
                       const String& mailBoxName);

// Reads the three values as stored, empty ones too. False: errorText says why. Never raises; shows nothing
// but the message of a RegValue that can't be created.
bool ReadMailBoxLogon(const String& mailBoxName, String& projectPath, String& userId, String& encodedPassword,
                      String& errorText);

// The record's project path, trimmed, or the empty string.
String GetMailBoxProjectPath(const String& mailBoxName, bool report);

// A RegUtil that stands on the record's key, or nothing.
RegUtil OpenMailBoxKey(const String& mailBoxName, bool report);

}  // namespace TvEmailServices
