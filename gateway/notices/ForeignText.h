// ForeignText: what a server or a command answered, as part of a reason for the user.
#pragma once

#include <string_view>

#include "platform/Text.h"

namespace Gateway {

// The bytes as one line of at most 500 characters, without control characters and others that can't be seen.
// Pure.
Platform::String ForeignText(std::string_view bytes);

}  // namespace Gateway
