// HeaderRepair: headers of MIME as mail programs deform them, put right before the parser reads them.
#pragma once

#include <string>

namespace Mime {

// Changes the bytes of a message, whose lines end in LF or CR LF, in place and without changing their number:
// - of two fields From, Content-Type, Content-Transfer-Encoding or Content-Disposition in one header the
// first
//   counts, as in most mail programs; the name of any other one is made unknown,
// - in Content-Type a missing semicolon in front of a parameter is set, and a quote that never ends goes.
// Looked at are the header of the message and those behind the delimiters of its multiparts; the headers of
// attached messages are left alone. Linear in the size; pure.
void RepairHeaders(std::string& bytes);

}  // namespace Mime
