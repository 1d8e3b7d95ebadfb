// SignedContent: what an S/MIME message of the opaque kind (RFC 8551 section 3.5.2) carries.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Mime {

// The MIME entity that was signed, out of the DER or BER bytes of a CMS structure. None where the bytes are
// no signed data, as with encrypted mail, or hold more elements than a signed mail has. The signature isn't
// checked, and nothing is claimed about it. Needs memory for the content once, and a bounded amount besides.
// Any thread.
std::optional<std::string> SignedContent(std::string_view bytes);

}  // namespace Mime
