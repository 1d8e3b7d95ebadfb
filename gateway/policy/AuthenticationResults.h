// AuthenticationResults: reads the field in which a mail server reports how it checked a mail's origin (RFC
// 8601).
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Gateway {

// True for a name that can be an authserv-id. A name with a blank, for example, would never be found.
bool IsServerName(std::string_view name);

// The result of one method, such as "spf=pass smtp.mailfrom=ann@x.org".
struct MethodResult {
  std::string Method;  // in lower case, without its version
  std::string Result;  // in lower case
  // Names such as "smtp.mailfrom", in lower case, and their values as they are written, without quotes.
  std::vector<std::pair<std::string, std::string>> Properties;

  // The domain in the first property of the name: the value, or what follows its last "@". Empty without one.
  std::string_view Domain(std::string_view property) const;
};

struct AuthenticationResults {
  std::string Server;  // the authserv-id; empty if it can't be read
  // False after an unclosed quote, and for a version of the field or of a method other than 1; Results is
  // empty then.
  bool Readable = true;
  std::vector<MethodResult> Results;
};

// Reads the value of a field, unfolded. What isn't of the standard's form gives no result, and never another
// method's or property's. Linear at any nesting depth; pure.
AuthenticationResults ReadAuthenticationResults(std::string_view value);

}  // namespace Gateway
