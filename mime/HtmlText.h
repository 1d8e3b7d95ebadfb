// HtmlText: converts an HTML mail to the text that a browser would show.
#pragma once

#include "platform/Text.h"

namespace Mime {

using Platform::String;
using Platform::StringView;

// Tags, comments, scripts, styles and hidden elements are left out, and references are decoded. A block
// begins on a line of its own, an empty line separates paragraphs, consecutive blanks become one except in
// preformatted text, and no-break spaces become blanks. List items begin with "*" or their number. An image
// becomes its alternative text. A link whose text isn't its target is followed by the target in angle
// brackets. Quotes are not marked, so that their lines stay unchanged. Lines end in a line feed and have no
// blanks at their ends; the text has no line ends at its ends. Malformed HTML is read as a browser does.
//
// The time is linear in the size of the document at any depth, and the text is at most as long as the
// document. Pure; any thread.
String HtmlToText(StringView html);

// The charset in a meta element near the start of an HTML document; empty without one.
std::string HtmlCharset(std::string_view bytes);

}  // namespace Mime
