// Strangers: refuses the mail of senders who may not take part by mail.
#pragma once

#include <optional>

#include "gateway/policy/Gate.h"

namespace Gateway {

// A refusal if the mail names no sender, or the project knows no user with the sender's address, or that user
// doesn't take mail. Any thread.
std::optional<Refusal> RefuseStranger(const GateFacts& facts, const PolicySettings& settings);

}  // namespace Gateway
