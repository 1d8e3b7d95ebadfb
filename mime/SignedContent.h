// SignedContent: the content of an opaque S/MIME message (RFC 8551 section 3.5.2).
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Mime {

// The signed MIME entity in the DER or BER bytes of a CMS structure. Nothing if the bytes are no signed data,
// as in encrypted mail, or have more elements than a signed mail needs. The signature isn't verified. Needs
// memory for one copy of the content, plus a bounded amount. Any thread.
std::optional<std::string> SignedContent(std::string_view bytes);

}  // namespace Mime
