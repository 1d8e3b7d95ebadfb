// TransferEncoding: decodes the transfer encodings of RFC 2045 section 6.
#pragma once

#include <string>
#include <string_view>

namespace Mime {

// The decoded bytes. label is the value of Content-Transfer-Encoding; misspellings of mail programs
// ("Quoted-Printable;", "base-64") are accepted. An unknown label, and invalid base64, leave the bytes
// unchanged. The result refers to raw, or to storage, which is only written if decoding changes anything.
// Linear; storage needs at most the size of raw. Pure; any thread.
std::string_view DecodeTransfer(std::string_view raw, std::string_view label, std::string& storage);

}  // namespace Mime
