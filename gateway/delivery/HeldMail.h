// HeldMail: keeps the refused mails of a mailbox, each with its reason, until somebody decides on them.
//
// They are in a Maildir for each mailbox, which any mail program can read: HOME/held/NAME/new, or cur after a
// mail program moved a mail there. Files are named by the mail's id, the first 16 hexadecimal digits of its
// SHA-256, so a mail that is held again is the same file. The reasons are in HOME/held/NAME/reasons/ID.json.
// Several processes and threads may use one mailbox's folder; a lock on it orders them.
#pragma once

#include <string>
#include <string_view>

#include "gateway/delivery/HeldReason.h"

namespace Gateway {

class HeldMail {
 public:
  // Does nothing yet. The mailbox is found in any case.
  explicit HeldMail(StringView mailbox);

  // Keeps a mail as it came, or changes the reason of one that is held already. Both are on disk when this
  // returns. Returns the id. Raises 57, 70 or 76 with the reason, such as a full disk; then nothing new is
  // held, and a mail that was held before still is.
  std::string Keep(std::string_view bytes, const HeldReason& reason);

  // Removes the mails that are held for longer than that number of days; 0 keeps all. Also removes
  // what an interrupted Keep left behind. Does so once a day, whoever calls it; costs one look at a file
  // otherwise. Raises nothing: what can't be removed stays until the next day.
  void Expire(int days);

 private:
  std::string folder_;
  String mailbox_;
};

}  // namespace Gateway
