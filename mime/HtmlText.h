// HtmlText: the text of an HTML mail, as a reader would copy it from the screen.
#pragma once

#include "platform/Text.h"

namespace Mime {

using Platform::String;
using Platform::StringView;

// Tags, comments, scripts, styles and hidden elements are left out; references become their characters. A
// block begins on a line of its own, paragraphs have an empty line between them, runs of blanks are one blank
// except in preformatted text, and no-break spaces are blanks. A list's items begin with "*" or their number.
// An image is its alternative text. A link whose text doesn't tell its address is followed by the address in
// angle brackets. A quote is text like any other, so that a line in it stays a line. Lines end in a line feed
// and have no blanks at their ends; the text has no line ends at its own ends. Malformed HTML gives what a
// browser shows of it.
//
// Takes time linear in the size of the document, at whatever depth, and gives at most as many characters.
// Pure; any thread.
String HtmlToText(StringView html);

// The charset that an HTML document names in a meta element near its beginning, or the empty string.
std::string HtmlCharset(std::string_view bytes);

}  // namespace Mime
