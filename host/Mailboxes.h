// Mailboxes: the mailbox records of this machine, for commands.
#pragma once

#include "gateway/delivery/MailboxRecords.h"

namespace Host {

using namespace Platform;
using Gateway::MailboxRecord;

// All records, ordered by name. Raises a CommandError if the store doesn't exist.
std::vector<MailboxRecord> ReadMailboxes();

// The record of this name, in any case; nothing if there is none. Raises as ReadMailboxes.
std::optional<MailboxRecord> FindMailbox(StringView name);

// The same. Raises a CommandError if there is none.
MailboxRecord RequireMailbox(StringView name);

}  // namespace Host
