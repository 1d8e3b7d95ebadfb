#include "host/Mailboxes.h"

#include "host/CommandError.h"
#include "host/Stores.h"

namespace Host {

std::vector<MailboxRecord> ReadMailboxes() {
  RequireStore(Hive::LocalMachine);
  return Gateway::ReadMailboxes();
}

std::optional<MailboxRecord> FindMailbox(StringView name) {
  RequireStore(Hive::LocalMachine);
  return Gateway::FindMailbox(name);
}

MailboxRecord RequireMailbox(StringView name) {
  if (auto mailbox = FindMailbox(name)) return *mailbox;
  throw CommandError(NotConfigured, TextNumber::kMailboxUnknown, name);
}

}  // namespace Host
