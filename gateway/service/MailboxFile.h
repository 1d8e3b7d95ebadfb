// MailboxFile: the files that the service keeps for each mailbox in the folder of the stores.
#pragma once

#include <string>

#include "platform/Text.h"

namespace Gateway {

// HOME/FOLDER/NAME, which needn't exist. Raises 76 as Runtime::HomePath.
std::string MailboxFile(const char* folder, Platform::StringView mailbox);

// The same; creates the folder with mode 0700 if it doesn't exist. Raises 57 if it can't, also if the folder
// of the stores doesn't exist: its disk may not be mounted.
std::string MakeMailboxFile(const char* folder, Platform::StringView mailbox);

// Raises 57: the path can't be written, for the reason of an errno.
[[noreturn]] void RaiseFolderDenied(const std::string& path, int error);

}  // namespace Gateway
