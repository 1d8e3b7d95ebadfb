// MailboxRecords: the mailbox records of this machine.
#pragma once

#include <optional>
#include <vector>

#include "platform/Text.h"

namespace Gateway {

using Platform::String;
using Platform::StringView;

struct MailboxRecord {
  String Name;
  String ProjectPath;
  String UserId;
  String EncodedPassword;
  // False after an interrupted write, and if a value is no text.
  bool Complete() const { return !ProjectPath.empty() && !UserId.empty() && !EncodedPassword.empty(); }
  friend bool operator==(const MailboxRecord&, const MailboxRecord&) = default;
};

// All of these are for any thread, and raise 57 with the reason if the store is missing or can't be read or
// written. Reading again without a change in the store costs one read of the store's
// state.

// All records, ordered by name.
std::vector<MailboxRecord> ReadMailboxes();

// The record of this name, in any case; nothing if there is none. The name is spelled as in the store.
std::optional<MailboxRecord> FindMailbox(StringView name);

// Removes the record, which frees the name. No effect if there is none.
void RemoveMailbox(StringView name);

}  // namespace Gateway
