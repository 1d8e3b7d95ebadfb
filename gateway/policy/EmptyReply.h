// EmptyReply: the reason why a mail gives a reply without text.
#pragma once

#include <cstddef>
#include <optional>

#include "gateway/policy/Gate.h"

namespace Gateway {

// A sentence in the user's language that says why the reply has no visible text; empty if it has some. cut is
// the position of the cut marker in the mail's body, npos without one, and marker its text. Raises nothing
// but std::bad_alloc. Any thread.
String WhyReplyIsEmpty(const Mime::Mail& mail, std::size_t cut, StringView marker);

// A refusal with that reason. Any thread.
std::optional<Refusal> RefuseEmptyReply(const GateFacts& facts, const PolicySettings& settings);

}  // namespace Gateway
