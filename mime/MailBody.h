// MailBody: the text of a mail among its parts.
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

// The text as RFC 8621 section 4.1.4 chooses it for textBody. The inline text parts, plain or HTML, are
// joined in their order, each on a line of its own; those with a file name, behind the first part of a
// multipart, are attachments. Of alternatives the plain ones are the text, or the HTML where the plain ones
// are blank. Other parts say nothing, and an attached message is not entered. In addition:
// - text/markdown, text/enriched and the content of opaque S/MIME signed mail are text as well,
// - a mail whose inline text is blank, and not encrypted, gives the first of its attached texts,
// - inline uuencoded files are left out, and format=flowed and HTML are undone.
// Encrypted parts give no text. Decodes no part that isn't needed. Linear in the size; raises
// std::bad_alloc only.
BodyText BodyOf(const ParsedMessage& message);

}  // namespace Mime
