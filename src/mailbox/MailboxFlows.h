// MailboxFlows: adding, changing and deleting a mailbox, whose record and project section are kept together.
//
// Every failure is shown, and the flow then gives false. A flow whose second write fails restores the former
// state as far as it can, and shows what it couldn't restore (kRecordNotRestored, kSettingsNotRestored,
// kNotDeleted). A raised failure ends a flow at once, without restoring anything. Called on the thread of the
// user's forms.
#pragma once

#include <optional>

#include "platform/Value.h"

namespace TvEmailServices {

using namespace Platform;

// Adds the mailbox (addMode) or changes it. A change without a project path or user id updates only the
// settings in the project file.
bool UpdateMailBox(const String& mailBoxName, const ObjectRef& sess, const String& projectPath,
                   const String& userId, const String& password, bool addMode);

// A failed add deletes the mailbox with its key again, but no section that was in its project before.
bool AddMailBox(const String& mailBoxName, const ObjectRef& sess, const String& projectPath,
                const String& userId, const String& password);

bool ChangeMailBox(const String& mailBoxName, const ObjectRef& sess, const String& projectPath,
                   const String& userId, const String& password);
bool ResaveMailBoxSettings(const String& mailBoxName, const ObjectRef& sess);

// Deletes the project's section and, if removeRecord is true, the record in the registry. kNotDeleted shows
// which of the two failed. If onlyFrom is given, a section of any other project is kept.
bool DeleteMailBox(const String& mailBoxName, bool removeRecord, const std::optional<String>& onlyFrom = {});

}  // namespace TvEmailServices
