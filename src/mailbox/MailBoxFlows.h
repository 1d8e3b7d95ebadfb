// MailBoxFlows: adding, changing and deleting a mailbox, whose record and project section are kept together.
//
// Every failure is shown to the user, and a flow then gives false. A flow whose second write fails puts back
// what it can and says what it couldn't (10055, 10056, 10047). A raised failure ends a flow at once and
// undoes nothing.
#pragma once

#include <optional>

#include "platform/Value.h"

namespace TvEmailServices {

using namespace Platform;

// Adds (addMode), changes, or, without a project path or user id, brings the project's settings up to date
// alone.
bool UpdateMailBox(const String& mailBoxName, const ObjectRef& sess, const String& projectPath,
                   const String& userId, const String& password, bool addMode);

// A failed add takes the mailbox out again with its key. A section that the add can't have made stays in its
// project: others may have written it, and nobody could bring it back.
bool AddMailBox(const String& mailBoxName, const ObjectRef& sess, const String& projectPath,
                const String& userId, const String& password);

bool ChangeMailBox(const String& mailBoxName, const ObjectRef& sess, const String& projectPath,
                   const String& userId, const String& password);
bool ResaveMailBoxSettings(const String& mailBoxName, const ObjectRef& sess);

// Takes the section out of the project and, if removeRecord is on, the record out of the registry. Message
// 10047 says which of the two couldn't be removed. Where onlyFrom is given, a section of any other project is
// left alone.
bool DeleteMailBox(const String& mailBoxName, bool removeRecord, const std::optional<String>& onlyFrom = {});

}  // namespace TvEmailServices
