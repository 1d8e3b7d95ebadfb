// Mail: what the component needs of a mail, taken out of its bytes.
#pragma once

#include <optional>
#include <string>

#include "platform/Object.h"

namespace Host {

using Platform::String;

struct Mail {
  std::optional<String> FromAddress;  // the first address of the From field; none without field or address
  String MessageId;                   // with its angle brackets; empty without one
  String Subject;
  String Body;
};

// Reads a message of RFC 5322 with line ends of any kind. Malformed mail gives what can be told from it: this
// fails only for want of memory (std::bad_alloc).
Mail ReadMail(std::string bytes);

// The message object for the component: Message, and of that From (nothing without an address), subject and
// body; of From Address.
Platform::ObjectRef MakeMessageObject(Mail mail);

}  // namespace Host
