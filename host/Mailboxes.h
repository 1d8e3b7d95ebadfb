// Mailboxes: the mailbox records of this machine.
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
  // False after an interrupted write, and if a value is no text.
  bool Complete() const { return !ProjectPath.empty() && !UserId.empty() && !EncodedPassword.empty(); }
  friend bool operator==(const MailboxRecord&, const MailboxRecord&) = default;
};

// All records, ordered by name. Raises a CommandError if the store doesn't exist.
std::vector<MailboxRecord> ReadMailboxes();

// The record of this name, in any case; nothing if there is none.
std::optional<MailboxRecord> FindMailbox(StringView name);

// The same. Raises a CommandError if there is none.
MailboxRecord RequireMailbox(StringView name);

// Removes the record, which frees the name. Returns false if the record could not be removed.
bool RemoveMailbox(const MailboxRecord& mailbox);

}  // namespace Host
