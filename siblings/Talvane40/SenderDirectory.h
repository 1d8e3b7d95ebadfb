// SenderDirectory: finds the user of a project who has a sender's address.
#pragma once

#include <unordered_map>

#include "siblings/Talvane40/ProjectDatabase.h"

namespace Talvane40 {

struct Sender {
  bool MailAccepted;
  std::int32_t UserKey;
  String Language;
};

// A copy of the users, which is read again only after one of them was changed.
class SenderDirectory {
 public:
  // The user with the lowest key of those who have the address; null if there is none. Addresses are compared
  // by their canonical form without regard to case; the empty one is nobody's. The pointer is valid until the
  // next call. Raises 57 if the database can't be read.
  const Sender* Find(ProjectDatabase& database, StringView address);

 private:
  void Read(ProjectDatabase& database);

  std::unordered_map<String, Sender> senders_;
  std::int64_t version_ = -1;  // of the users that were read
};

}  // namespace Talvane40
