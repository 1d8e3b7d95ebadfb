// ProjectCheck: checks a project's path and logon, and a mailbox's name.
//
// Both functions show why they give false, raise no failure, and write nothing.
#pragma once

#include "platform/Value.h"

namespace TvEmailServices {

using namespace Platform;

// True if the project can be opened, its user may bind a mailbox, and no other mailbox has the project's
// name. Sets mailBoxName to the project's name, also if only the permission is missing (kMailboxNotAllowed).
bool CheckProjectCredentials(const String& projectPath, const String& userId, const String& password,
                             String& mailBoxName, const ObjectRef& sess);

// True if no mailbox's key has the name, in any case.
bool IsMailBoxNameFree(const String& mailBoxName);

}  // namespace TvEmailServices
