// LimitCheck: refuses mails that would exhaust the parser.
#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>

#include "mime/Limits.h"

namespace Mime {

// Raised for a mail beyond a limit.
class LimitExceeded : public std::runtime_error {
 public:
  LimitExceeded(std::int32_t text, std::size_t limit)
      : std::runtime_error("the mail exceeds a limit"), text_(text), limit_(limit) {}

  // The number of the text that names the limit, such as "it has more than %1 parts", and its argument.
  std::int32_t Text() const { return text_; }
  std::size_t Limit() const { return limit_; }

 private:
  std::int32_t text_;
  std::size_t limit_;
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
