// AutomaticMail: refuses mail that a program sent and no person wrote.
//
// A reply that is refused although a person wrote it costs more than the answer of a program that is stored.
// So a sign counts only if it says by itself that no person sent the mail to this mailbox, and if mail
// programs don't write it into the mail of their users. These don't count:
// - X-Auto-Response-Suppress asks programs that get the mail not to answer. Outlook and Exchange write it
// into
//   the mail of persons as well.
// - Precedence: list. Mailing lists have List-Id, and some forwarding services write it into each mail.
// - a sender named postmaster or noreply: the first is a person in a small office, the second writes replies
//   of ticket systems, and either is a user of the project or a stranger.
// - List-Unsubscribe, which companies add to their employees' mail, and words of a subject ("Out of office"),
//   which depend on the language.
#pragma once

#include <optional>

#include "gateway/policy/Gate.h"

namespace Gateway {

// A refusal if the header (RFC 3834, RFC 2919, RFC 6522 and practice), the envelope or the sender says so.
// Any thread.
std::optional<Refusal> RefuseAutomaticMail(const GateFacts& facts, const PolicySettings& settings);

}  // namespace Gateway
