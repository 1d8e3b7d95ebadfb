// PostfixMap: the mailboxes as a recipient table for Postfix's relay_recipient_maps.
#pragma once

#include <string>
#include <vector>

#include "host/Mailboxes.h"

namespace Host {

struct PostfixMap {
  std::string Text;             // one line "NAME@DOMAIN OK" for each mailbox
  std::vector<String> LeftOut;  // mailboxes whose name can't be part of an address, and incomplete ones
};

// The table of a domain, in the format of postmap(1). A name must be a dot-string of RFC 5321 in ASCII; names
// that need quotes or SMTPUTF8 are left out. Raises a CommandError if domain is no domain name.
PostfixMap MakePostfixMap(const std::vector<MailboxRecord>& mailboxes, const std::string& domain);

}  // namespace Host
