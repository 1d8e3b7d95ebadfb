// AddressDepth: the nesting depth of a field of addresses.
#pragma once

#include <cstddef>
#include <string_view>

namespace Mime {

// The depth of the deepest nesting of groups (RFC 5322, section 3.4) or of comments in the value of a field,
// whichever is greater. Colons in quoted strings, comments, angle brackets and domain literals begin no
// group. Linear; pure.
std::size_t AddressDepth(std::string_view value);

}  // namespace Mime
