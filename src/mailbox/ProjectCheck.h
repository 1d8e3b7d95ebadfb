// ProjectCheck: the proof of a project's path and logon, and of a mailbox's name.
#pragma once

#include "platform/Value.h"

namespace TvEmailServices {

using namespace Platform;

// Opens the project for real. A mailbox takes the project's name, in the project's spelling, and no two
// mailbox keys may carry it. False: the user has been told why (10039, 10001, 10037, 10036, 10000 or a
// failure's text); after 10000 alone the mailbox's name is the project's already. Writes nothing.
bool CheckProjectCredentials(const String& projectPath, const String& userId, const String& password,
                             String& mailBoxName, const ObjectRef& sess);

// True if no mailbox key carries the name, in any case. False: the user has been told (10036 or 10037).
bool IsMailBoxNameFree(const String& mailBoxName);

}  // namespace TvEmailServices
