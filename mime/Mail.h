// Mail: the sender, subject and text of a mail.
#pragma once

#include <optional>
#include <string>

#include "mime/MailHeader.h"
#include "platform/Text.h"

namespace Mime {

using Platform::String;

struct Mail {
  std::optional<String> FromAddress;  // as it is written; nothing without an address
  String MessageId;                   // with its angle brackets; empty without one
  String Subject;
  String Body;
  bool Encrypted = false;  // the text can't be read; Body holds only unencrypted text
  MailHeader Header = {};  // for rules about a mail's origin
};

// Reads a message of RFC 5322 with line ends of any kind. Malformed mail gives what can be read of it. Raises
// LimitExceeded for a mail beyond the limits, and std::bad_alloc if memory is short, before it parses
// anything.
Mail ReadMail(std::string bytes);

}  // namespace Mime
