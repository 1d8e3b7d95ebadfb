// Mail: a mail's sender, subject and text, taken out of its bytes.
#pragma once

#include <optional>
#include <string>

#include "platform/Text.h"

namespace Mime {

using Platform::String;

struct Mail {
  std::optional<String>
      FromAddress;   // in the spelling of Platform::CanonicalAddress; none without an address
  String MessageId;  // with its angle brackets; empty without one
  String Subject;
  String Body;
  bool Encrypted = false;  // its text can't be read, and Body holds at most what stands beside it
};

// Reads a message of RFC 5322 with line ends of any kind. Malformed mail gives what can be told from it.
// Raises LimitExceeded for a mail beyond the limits, and std::bad_alloc where memory is short, before any of
// it is used.
Mail ReadMail(std::string bytes);

}  // namespace Mime
