// AutomaticMail: refuses mail that a program sent and no person wrote.
//
// To refuse a person's reply does more harm than to store a program's answer. So a sign counts only if it is
// sufficient alone, and if mail programs don't write it into the mail of their users. These don't count:
// - X-Auto-Response-Suppress asks programs not to answer. Outlook and Exchange also write it into the mail of
//   persons.
// - Precedence: list. Mailing lists have List-Id, and some forwarding services write it into each mail.
// - a sender named postmaster or noreply: the first is a person in a small office, the second writes replies
//   of ticket systems, and either is a user of the project or a stranger.
// - List-Unsubscribe, which companies add to their employees' mail, and words of a subject ("Out of office"),
//   which depend on the language.
#pragma once

#include <optional>

#include "gateway/policy/Gate.h"

namespace Gateway {

// A refusal if the header (RFC 3834, RFC 2919, RFC 6522 and practice), the envelope or the sender says so. A
// notification of this program is refused with any settings: as a reply it would be sent to everybody again,
// and two mailboxes that are users of each other's projects would never stop. Any thread.
std::optional<Refusal> RefuseAutomaticMail(const GateFacts& facts, const PolicySettings& settings);

}  // namespace Gateway
