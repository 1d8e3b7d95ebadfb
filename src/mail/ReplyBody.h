// ReplyBody: the text of a reply, from the body of a mail. Any thread; no state.
#pragma once

#include "platform/Text.h"

namespace TvEmailServices {

using namespace Platform;

// Cuts body at the cut marker (TextNumber::kCutMarker), makes every line end CR LF, and removes the blanks at
// both ends and then the line ends at the end. All lengths are 16-bit numbers. Refused are: a marker after
// position 32767, 32767 or more characters before it, and more than 32767 characters after the blanks are
// removed. Then the result is false, errorText is the failure's description, and body is unchanged, or cut at
// its marker. On true errorText is unchanged.
bool ParseReplyBody(String& body, String& errorText);

}  // namespace TvEmailServices
