#include "host/Mailboxes.h"

#include "host/CommandError.h"
#include "host/RegistryKey.h"
#include "host/Stores.h"
#include "platform/StoredNames.h"

namespace Host {

std::vector<MailboxRecord> ReadMailboxes() {
  RequireStore(Hive::LocalMachine);
  std::vector<MailboxRecord> mailboxes;
  const auto parent = RegistryKey::Open(Hive::LocalMachine, RegistryPath::kMailBoxes);
  if (!parent) return mailboxes;
  for (const String& name : parent->SubKeys()) {
    const auto key = RegistryKey::Open(Hive::LocalMachine, String(RegistryPath::kMailBoxes) + u"\\" + name);
    if (!key) continue;  // deleted since the names were read
    mailboxes.push_back({name, key->Text(MailBoxValue::kProjectPath), key->Text(MailBoxValue::kUserId),
                         key->Text(MailBoxValue::kPassword)});
  }
  return mailboxes;
}

std::optional<MailboxRecord> FindMailbox(StringView name) {
  for (MailboxRecord& mailbox : ReadMailboxes()) {
    if (EqualsIgnoreCase(mailbox.Name, name)) return std::move(mailbox);
  }
  return std::nullopt;
}

MailboxRecord RequireMailbox(StringView name) {
  if (auto mailbox = FindMailbox(name)) return *mailbox;
  throw CommandError(NotConfigured, u"there is no mailbox " + String(name) +
                                        u": see tvmail mailbox list, or add it with tvmail mailbox add");
}

bool RemoveMailbox(const MailboxRecord& mailbox) {
  const auto parent = RegistryKey::Open(Hive::LocalMachine, RegistryPath::kMailBoxes);
  return parent && parent->Delete(mailbox.Name);
}

}  // namespace Host
