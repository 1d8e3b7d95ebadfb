// HardWraps: undoes the line ends that a mail program put into the plain one of two alternative texts.
//
// Programs that send a text as plain text and as HTML (multipart/alternative) often break the lines of the
// plain one at 65 to 80 characters, which its writer didn't do. The HTML still tells which line ends are the
// writer's.
#pragma once

#include "platform/Text.h"

namespace Mime {

using Platform::String;
using Platform::StringView;

// True if a line of the text, not a quoted one, could have been broken by a program. Pure; linear.
bool MayBeWrapped(StringView text);

// The text with those line ends replaced with the blanks that twin, the text of the HTML, has in their place:
// each after a line that had no room for the next word. From the first place on where the words of both
// differ, as in quotes, nothing is changed. Pure; linear.
String WithoutHardWraps(StringView text, StringView twin);

}  // namespace Mime
