// HeldSummary: how much refused mail of a mailbox is held.
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>

#include "platform/Text.h"

namespace Gateway {

struct HeldSummary {
  std::size_t Count = 0;
  std::optional<std::chrono::sys_seconds> Oldest;  // when it was held; nothing without mail
};

// Looks at the files, not into them. Raises 57 if the folder can't be read; a missing folder holds nothing.
HeldSummary ReadHeldSummary(Platform::StringView mailbox);

}  // namespace Gateway
