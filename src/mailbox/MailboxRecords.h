// MailboxRecords: the registry record that binds a mailbox to its project.
//
// A record is a key with the mailbox's name below RegistryPath::kMailBoxes of the machine-wide hive. It has
// three string values (MailBoxValue): the project's path, the user id, and the password, encoded by
// ComponentSecurity. The parent key must exist. A partial write isn't undone. Only ReadMailBoxLogon is for
// unattended use; the other functions are called on the thread of the user's forms. No function raises a
// failure.
#pragma once

#include "platform/contracts/GeneralServices.h"

namespace TvEmailServices {

using namespace Platform;

// Writes path, user id and the encoded password, in this order. False after a message (kKeyNotAdded,
// kRecordNotEntered, kRecordNotStored or the raised failure); the values written before are kept.
bool WriteMailBoxRecord(const String& projectPath, const String& userId, const String& password,
                        const String& mailBoxName);

// The same with an encoded password.
bool RestoreMailBoxRecord(const String& projectPath, const String& userId, const String& encodedPassword,
                          const String& mailBoxName);

// Reads the three values, trimmed. False if one is missing or empty; then those before it have been read.
bool ReadMailBoxRecord(String& projectPath, String& userId, String& encodedPassword,
                       const String& mailBoxName);

// Reads the three values as stored, also empty ones. False with errorText if one is missing. Shows no
// message, except if RegValue can't be created.
bool ReadMailBoxLogon(const String& mailBoxName, String& projectPath, String& userId, String& encodedPassword,
                      String& errorText);

// The record's project path, trimmed; empty if it is missing, with a message if report is true.
String GetMailBoxProjectPath(const String& mailBoxName, bool report);

// A RegUtil at the record's key; empty if there is no such key, with a message if report is true.
RegUtil OpenMailBoxKey(const String& mailBoxName, bool report);

}  // namespace TvEmailServices
