// Authentication: refuses mail unless a trusted mail server reports that it comes from its sender's domain.
//
// The mail server in front of the mailbox checks SPF, DKIM and DMARC and adds its results on top of the
// header (RFC 8601). It has to remove fields with its own name that came with the mail, as that standard
// demands. Only the topmost field of its name counts here, so that a forged one below doesn't.
//
// DMARC takes a signing domain for aligned if it belongs to the same organisation, which can only be
// decided with a list of all public suffixes. Here a domain is aligned with the From domain if it is equal,
// its parent or its child. The owner of a domain controls its subdomains, unless it gives them to the public,
// and such a domain has no users of its own. Bounce domains of mail services are children. A name without a
// point, such as a top-level domain, is no parent.
#pragma once

#include <optional>

#include "gateway/policy/Gate.h"

namespace Gateway {

// Nothing if no authentication is required. Otherwise a refusal unless the server reports dmarc=pass for the
// From domain, or spf=pass or dkim=pass for an aligned domain, and no dmarc=fail. Any thread.
std::optional<Refusal> RefuseUnauthenticated(const GateFacts& facts, const PolicySettings& settings);

}  // namespace Gateway
