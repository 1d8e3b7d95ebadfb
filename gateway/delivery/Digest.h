// Digest: SHA-256 (FIPS 180-4).
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace Gateway {

// The digest of the pieces, one after the other, as 64 lower-case hexadecimal digits. Raises 57 if the
// library fails. Any thread.
std::string Sha256(std::initializer_list<std::string_view> pieces);

}  // namespace Gateway
