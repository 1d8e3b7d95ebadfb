// LimitCheck: keeps from the parser what would exhaust it.
#pragma once

#include <stdexcept>
#include <string>

#include "mime/Limits.h"

namespace Mime {

// A mail that holds more than a limit allows. what() says which one: "it has more than 5000 parts".
class LimitExceeded : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Called with the bytes that the parser is to get, whose lines end in LF or CR LF. Raises LimitExceeded for a
// mail beyond a limit.
//
// The fields that the parser decodes although nobody reads them get a name that it doesn't know: their first
// letter becomes an X. It would decode them by a method that takes minutes for a deformed megabyte. These are
// all fields of addresses and all subjects but the mail's own From and first Subject, dates, descriptions,
// identifiers and places of parts, and beyond ShortFieldSize also what is read otherwise.
//
// Where it isn't sure what the parser will see it counts more rather than less. One scan, linear in the size;
// needs memory for the boundaries alone.
void CheckLimits(std::string& bytes, const MailLimits& limits = {});

}  // namespace Mime
