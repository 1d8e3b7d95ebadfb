// HeldFolder: where a mailbox's held mails are.
#pragma once

#include <string>
#include <vector>

#include "platform/Text.h"

namespace Gateway {

using Platform::String;
using Platform::StringView;

// The folder of all held mail. Raises 76 as Runtime::HomePath.
std::string HeldHome();

// The folder of a mailbox, which needn't exist. See MailboxFileName for its name.
std::string HeldFolder(StringView mailbox);

// The mailbox of a folder, as far as its name tells.
String MailboxOfFolder(const std::string& folder);

// The folders of all mailboxes that have one, ordered by name. Raises 57 if they can't be read.
std::vector<std::string> AllHeldFolders();

// Creates a mailbox's folder and those in it, durably, with mode 0700. No effect if they exist. Raises 57.
void MakeHeldFolder(const std::string& folder);

// The path of the mail with this id in a mailbox's folder, under any name that a mail program gave it; empty
// if it isn't held.
std::string FindHeld(const std::string& folder, const std::string& id);

// The path of its reason, which needn't exist.
std::string PathOfReason(const std::string& folder, const std::string& id);

// The id in the name of a file in new or cur: the name, or the part before its colon. Empty for a file of
// another kind.
std::string IdOfName(const std::string& name);

}  // namespace Gateway
