// MailboxLock: keeps two processes, or two threads, from serving one mailbox at a time.
#pragma once

#include <optional>
#include <string>

#include "platform/Text.h"
#include "runtime/DurableFile.h"

namespace Gateway {

// An advisory lock on a file in the folder of the stores (fcntl, of the open file, so that it also holds
// between threads). It is released with the object, and when its process ends in any way. Any thread.
class MailboxLock {
 public:
  // Doesn't wait. Raises 57, with the number of the process, if another one holds the lock, and 57 if the
  // file can't be created or locked. The mailbox's name is taken in any case.
  explicit MailboxLock(Platform::StringView mailbox);

  // The number of the process that holds the lock; nothing if none does, or if that can't be found out.
  static std::optional<std::string> Holder(Platform::StringView mailbox);

 private:
  Runtime::Descriptor file_;
};

}  // namespace Gateway
