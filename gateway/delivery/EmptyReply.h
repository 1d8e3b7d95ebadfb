// EmptyReply: why a mail gives a reply without text.
#pragma once

#include <string>

#include "gateway/delivery/CutMarker.h"
#include "mime/Mail.h"

namespace Gateway {

// A sentence that says why nothing of the mail's text can be seen in the reply; empty where something can.
// cut is the place of the cut marker in the mail's body, npos where it has none. Raises nothing.
std::string WhyReplyIsEmpty(const Mime::Mail& mail, std::size_t cut, CutMarker& marker);

}  // namespace Gateway
