// EmptyReply: the reason why a mail gives a reply without text.
#pragma once

#include <cstddef>
#include <optional>

#include "gateway/policy/Gate.h"

namespace Gateway {

// Why the reply has no visible text; nothing if it has some. cut is the position of the cut marker in the
// mail's body, npos without one, and marker its text. Raises nothing but std::bad_alloc. Any thread.
std::optional<Refusal> WhyReplyIsEmpty(const Mime::Mail& mail, std::size_t cut, StringView marker);

// That refusal, unless such replies are wanted. Any thread.
std::optional<Refusal> RefuseEmptyReply(const GateFacts& facts, const PolicySettings& settings);

}  // namespace Gateway
