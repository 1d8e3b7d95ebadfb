// HtmlText: the text of an HTML mail, as a reader would copy it from the screen.
#pragma once

#include "platform/Text.h"

namespace Mime {

using Platform::String;
using Platform::StringView;

// Tags go, entities become their characters, scripts, styles and the head vanish. A block begins on a line of
// its own, paragraphs have an empty line between them, a line break is one, runs of blanks are one blank
// except in preformatted text, and list items have their mark. A quote is text like any other, so that a line
// in it stays a line. Lines end in a line feed; the text has none at its ends. Malformed HTML gives the text
// that can be told from it. Pure; any thread.
String HtmlToText(StringView html);

// The charset that an HTML document names in a meta element near its beginning, or the empty string.
std::string HtmlCharset(std::string_view bytes);

}  // namespace Mime
