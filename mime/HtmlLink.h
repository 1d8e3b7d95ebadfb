// HtmlLink: where a link leads, in the form in which a reader is told of it.
#pragma once

#include "platform/Text.h"

namespace Mime {

using Platform::String;
using Platform::StringView;

// The address of a link, from the value of its href: on one line and without "mailto:" and what belongs to it
// beside the address. Empty where it leads to nothing outside the mail: an anchor in it, a script, an
// attachment or data. Empty as well where it is longer than addresses are.
String LinkAddress(StringView href);

// True if a link's text tells its address already: the same but for the scheme, a slash at the end and the
// case of ASCII letters.
bool TellsAddress(StringView text, StringView address);

}  // namespace Mime
