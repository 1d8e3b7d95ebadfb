// ImapFolderName: names of folders as IMAP sends them.
#pragma once

#include <string>

namespace Gateway {

// UTF-8 to the modified UTF-7 of RFC 3501 section 5.1.3. Pure.
std::string ImapFolderName(const std::string& name);

}  // namespace Gateway
