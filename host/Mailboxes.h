// MailboxRecords: the mailboxes of this machine, as the mail-reader host sees them.
#pragma once

#include <optional>
#include <vector>

#include "platform/Text.h"

namespace Host {

using namespace Platform;

struct MailboxRecord {
  String Name;
  String ProjectPath;
  String UserId;
  String EncodedPassword;
  // False for what a write left that was cut off half way, or whose values aren't texts.
  bool Complete() const { return !ProjectPath.empty() && !UserId.empty() && !EncodedPassword.empty(); }
  friend bool operator==(const MailboxRecord&, const MailboxRecord&) = default;
};

// All of them, ordered by name. Raises a CommandError where the stores were never set up.
std::vector<MailboxRecord> ReadMailboxes();

// One of them, its name in any case.
std::optional<MailboxRecord> FindMailbox(StringView name);

// The same; raises a CommandError where there is none.
MailboxRecord RequireMailbox(StringView name);

// Removes the record and so frees the name. False if it still stands.
bool RemoveMailbox(const MailboxRecord& mailbox);

}  // namespace Host
