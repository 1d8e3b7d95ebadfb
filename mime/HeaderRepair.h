// HeaderRepair: corrects malformed MIME headers before they are parsed.
#pragma once

#include <string>

namespace Mime {

// Changes the bytes of a message, whose lines end in LF or CR LF, in place and without changing their number:
// - If a header has more than one From, Content-Type, Content-Transfer-Encoding or Content-Disposition, the
//   first counts, as in most mail programs. The others are renamed.
// - In Content-Type a missing semicolon in front of a parameter is added, and an unclosed quote is removed.
// This applies to the header of the message and of the parts of its multiparts, but not to attached messages.
// Linear in the size; pure.
void RepairHeaders(std::string& bytes);

}  // namespace Mime
