// LimitCheck: refuses mails that would exhaust the parser.
#pragma once

#include <stdexcept>
#include <string>

#include "mime/Limits.h"

namespace Mime {

// Raised for a mail beyond a limit. what() names the limit, such as "it has more than 5000 parts".
class LimitExceeded : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Checks the bytes for the parser, whose lines end in LF or CR LF. Raises LimitExceeded for a mail beyond a
// limit.
//
// Fields that the parser decodes although they aren't read are renamed: their first letter becomes an X, so
// that the parser ignores them. It would need minutes for a malformed one of a megabyte. These are all
// address fields and subjects but the mail's own From and first Subject; dates; descriptions, identifiers and
// locations of parts; and any other decoded field beyond ShortFieldSize.
//
// In doubt, the count is higher than the parser's. One scan, linear in the size; needs memory for the
// boundaries only.
void CheckLimits(std::string& bytes, const MailLimits& limits = {});

}  // namespace Mime
