#include "gateway/delivery/MailboxRecords.h"

#include "platform/StoredNames.h"
#include "runtime/RegistryStore.h"

namespace Gateway {
namespace {

using Platform::Hive;
using Runtime::RegistryStore;

String PathOf(StringView name) {
  return String(Platform::RegistryPath::kMailBoxes) + u"\\" + String(name);
}

String TextOf(const String& path, StringView name) {
  const auto value = RegistryStore::Read(Hive::LocalMachine, path, name);
  return value && value->Content.IsString() ? value->Content.ToString() : String();
}

MailboxRecord ReadMailbox(const String& name) {
  using namespace Platform::MailBoxValue;
  const String path = PathOf(name);
  return {name, TextOf(path, kProjectPath), TextOf(path, kUserId), TextOf(path, kPassword)};
}

}  // namespace

std::vector<MailboxRecord> ReadMailboxes() {
  std::vector<MailboxRecord> mailboxes;
  for (const String& name : RegistryStore::SubKeys(Hive::LocalMachine, Platform::RegistryPath::kMailBoxes)) {
    // It may have been deleted since the names were read.
    if (RegistryStore::KeyExists(Hive::LocalMachine, PathOf(name))) mailboxes.push_back(ReadMailbox(name));
  }
  return mailboxes;
}

std::optional<MailboxRecord> FindMailbox(StringView name) {
  if (!RegistryStore::IsKeyName(name)) return std::nullopt;
  const auto stored = RegistryStore::NameOf(Hive::LocalMachine, PathOf(name));
  return stored ? std::optional(ReadMailbox(*stored)) : std::nullopt;
}

void RemoveMailbox(StringView name) {
  if (RegistryStore::IsKeyName(name)) RegistryStore::DeleteKey(Hive::LocalMachine, PathOf(name));
}

}  // namespace Gateway
