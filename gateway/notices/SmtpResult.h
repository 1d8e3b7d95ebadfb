// SmtpResult: what an answer of a mail server means for a mail and for those after it.
#pragma once

#include <optional>

#include "gateway/notices/MailTransport.h"
#include "gateway/notices/SmtpDialogue.h"

namespace Gateway {

// The result by what the server has answered; nothing if it is not the answers that tell it, but a broken
// connection. server is "host:port".
//
// A permanent answer ends a mail only where it is about the mail, after RCPT or DATA. Before that it is about
// the settings, which an administrator can correct, as a missing logon and a refusal to relay are.
std::optional<SendResult> SmtpResult(const SmtpDialogue& dialogue, const String& server,
                                     const String& recipient);

}  // namespace Gateway
