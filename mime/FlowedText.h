// FlowedText: text/plain; format=flowed (RFC 3676) with its paragraphs restored.
#pragma once

#include "platform/Text.h"

namespace Mime {

using Platform::String;
using Platform::StringView;

// Joins lines that a mail program broke: those that end in a blank, within one depth of quoting. deleteSpace
// is the parameter DelSp=yes, for scripts without blanks between words: the blank before the break is
// removed, too. The signature line "-- " is never joined. Quotes are marked as ">> text". Line ends of any
// kind are read; line feeds are written. Pure; any thread.
String UnflowText(StringView text, bool deleteSpace);

}  // namespace Mime
