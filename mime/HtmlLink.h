// HtmlLink: the target of a link, as it is shown in the text.
#pragma once

#include "platform/Text.h"

namespace Mime {

using Platform::String;
using Platform::StringView;

// The target in the value of an href, on one line; of "mailto:" the mail address alone. Empty for a target
// inside the mail (an anchor, a script, an attachment or data), and for one that is longer than real
// addresses are.
String LinkAddress(StringView href);

// True if a link's text is its target, apart from the scheme, a slash at the end and the case of ASCII
// letters.
bool ShowsAddress(StringView text, StringView address);

}  // namespace Mime
