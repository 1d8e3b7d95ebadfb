// EnrichedText: text/enriched of RFC 1896 as plain text.
#pragma once

#include "platform/Text.h"

namespace Mime {

using Platform::String;
using Platform::StringView;

// Converts text/enriched to plain text. Formatting commands and their parameters are removed, "<<" becomes
// "<", a single line end becomes a blank, and of several consecutive ones the first is removed; inside
// <nofill> line ends are kept. Lines of the result end in a line feed. Linear; pure.
String EnrichedToText(StringView enriched);

}  // namespace Mime
