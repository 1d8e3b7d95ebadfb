// ReplyBody: the text of a reply, taken from the body of an answering mail.
//
// Keeps nothing; called on the thread of the message.
#pragma once

#include "platform/Text.h"

namespace TvEmailServices {

using namespace Platform;

// Cuts body at the cut marker (text 2166 of the project library), makes every line end CR LF, and takes off
// the blanks at both ends and then the line ends at the end. All lengths are 16-bit numbers: a marker behind
// position 32767, 32767 characters or more in front of it, or more than 32767 characters after the blanks are
// off, are refused. False: errorText holds the failure's description, and body stands as it was, or cut at
// its marker where one was found. On true errorText stays untouched.
bool ParseReplyBody(String& body, String& errorText);

}  // namespace TvEmailServices
