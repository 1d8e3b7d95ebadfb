// FlowedText: text/plain in the format=flowed of RFC 3676, put back into the lines that its writer typed.
#pragma once

#include "platform/Text.h"

namespace Mime {

using Platform::String;
using Platform::StringView;

// Joins the lines that a mail program broke: those that end in a blank, within one depth of quoting.
// deleteSpace is the parameter DelSp=yes, for scripts without blanks between words: the blank before the
// break goes as well. The signature line "-- " never flows. Quotes keep their marks as ">> text". Line ends
// of any kind are read and line feeds are written. Pure; any thread.
String UnflowText(StringView text, bool deleteSpace);

}  // namespace Mime
