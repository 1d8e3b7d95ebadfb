// MailBody: selects and joins the text of a mail.
#pragma once

#include <string>

#include "mime/MessageParser.h"
#include "platform/Text.h"

namespace Mime {

using Platform::String;

struct BodyText {
  String Text;
  std::string Charset;  // the label of the first text part that has one; empty without any
  bool Encrypted =
      false;  // a part that could be the text is encrypted, by OpenPGP (RFC 3156) or S/MIME (RFC 8551)
};

// The text that RFC 8621 section 4.1.4 chooses for textBody. The inline text parts, plain or HTML, are joined
// in their order, each on a line of its own. Those with a file name, after the first part of a multipart, are
// attachments. Of alternatives the plain ones are used, or the HTML if the plain ones are blank. Other parts,
// and attached messages, are ignored. In addition:
// - text/markdown, text/enriched and the content of opaque S/MIME signed mail are text, too,
// - if the inline text is blank, and not encrypted, the first of the attached texts is used,
// - inline uuencoded files are left out, and format=flowed and HTML are converted,
// - line ends that the mail program put into a plain alternative are undone, see HardWraps.h.
// Encrypted parts give no text. Only the parts that are needed are decoded. Linear in the size; raises only
// std::bad_alloc.
BodyText BodyOf(const ParsedMessage& message);

}  // namespace Mime
