// MailSize: refuses a mail that is larger than its mailbox accepts.
#pragma once

#include <cstddef>
#include <optional>

#include "gateway/policy/PolicySettings.h"
#include "gateway/policy/Refusal.h"

namespace Gateway {

// A refusal if the whole mail, in bytes, is beyond the limit. Called before the mail is parsed. Any thread.
std::optional<Refusal> RefuseSize(std::size_t size, const PolicySettings& settings);

}  // namespace Gateway
