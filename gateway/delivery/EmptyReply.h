// EmptyReply: the reason why a mail gives a reply without text.
#pragma once

#include "gateway/delivery/CutMarker.h"
#include "mime/Mail.h"

namespace Gateway {

// A sentence in the user's language that says why the reply has no visible text; empty if it has some. cut is
// the position of the cut marker in the mail's body, npos without one. Raises nothing.
String WhyReplyIsEmpty(const Mime::Mail& mail, std::size_t cut, CutMarker& marker);

}  // namespace Gateway
