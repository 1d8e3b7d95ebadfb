// PostfixMap: the mailboxes as a table of recipients, for Postfix's relay_recipient_maps.
#pragma once

#include <string>
#include <vector>

#include "host/Mailboxes.h"

namespace Host {

struct PostfixMap {
  std::string Text;             // one line "NAME@DOMAIN OK" for each mailbox
  std::vector<String> LeftOut;  // mailboxes that no plain address can name, or that are incomplete
};

// The table of a domain, in the form of postmap(1). A name has to be a dot-string of RFC 5321 in ASCII: what
// would need quotes or SMTPUTF8 is left out. Raises a CommandError for what is no domain name.
PostfixMap MakePostfixMap(const std::vector<MailboxRecord>& mailboxes, const std::string& domain);

}  // namespace Host
