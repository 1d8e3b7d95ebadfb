// TransferEncoding: the bytes of a part with its transfer encoding undone, as RFC 2045 section 6 has it.
#pragma once

#include <string>
#include <string_view>

namespace Mime {

// The decoded bytes. label is the value of Content-Transfer-Encoding, whose spelling may be as sloppy as mail
// programs write it ("Quoted-Printable;", "base-64"); an unknown one leaves the bytes as they are, and so
// does base64 that isn't any. The result lies in raw, or in storage, which is written where decoding changes
// anything. Time is linear; storage holds no more than raw. Pure; any thread.
std::string_view DecodeTransfer(std::string_view raw, std::string_view label, std::string& storage);

}  // namespace Mime
