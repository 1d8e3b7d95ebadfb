#include "siblings/Talvane40/SenderDirectory.h"

#include "runtime/MailAddress.h"

namespace Talvane40 {
namespace {

String Compared(StringView address) {
  return FoldCase(Runtime::CanonicalAddress(address));
}

}  // namespace

const Sender* SenderDirectory::Find(ProjectDatabase& database, StringView address) {
  if (address.empty()) return nullptr;
  if (database.UsersVersion() != version_) Read(database);
  const auto found = senders_.find(Compared(address));
  return found == senders_.end() ? nullptr : &found->second;
}

void SenderDirectory::Read(ProjectDatabase& database) {
  std::int64_t version = -1;
  const std::vector<DescribedUser> users = database.Users(version);
  std::unordered_map<String, Sender> senders;
  senders.reserve(users.size());
  // Users come in the order of their keys, and the first one keeps an address.
  for (const DescribedUser& user : users)
    senders.try_emplace(Compared(user.Address), Sender{user.MailAccepted, user.Key, user.Language});
  senders_ = std::move(senders);
  version_ = version;
}

}  // namespace Talvane40
