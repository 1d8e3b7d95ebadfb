// EnrichedText: text/enriched of RFC 1896 as plain text.
#pragma once

#include "platform/Text.h"

namespace Mime {

using Platform::String;
using Platform::StringView;

// Formatting commands and their parameters go, "<<" is a less-than sign, a single line end is a blank, and of
// several in a row one goes; inside <nofill> line ends stay. Lines end in a line feed. Linear; pure.
String EnrichedToText(StringView enriched);

}  // namespace Mime
