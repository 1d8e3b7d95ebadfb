// MailboxFileName: the name of the file or folder that belongs to a mailbox.
#pragma once

#include <string>
#include <string_view>

#include "platform/Text.h"

namespace Gateway {

// The mailbox's name in lower case, with every character but letters, digits, "-" and "_" percent-encoded:
// two mailboxes never have the same file name, and none leads out of its folder. A name that would be too
// long for a file system ends in its digest. Pure; any thread.
std::string MailboxFileName(Platform::StringView mailbox);

// The mailbox of such a name, in lower case; for one that ends in a digest, its beginning and the digest.
// Pure; any thread.
Platform::String MailboxOfFileName(std::string_view name);

}  // namespace Gateway
