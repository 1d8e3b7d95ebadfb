// TypedText: removes key sequences from typed text.
#pragma once

#include "platform/Text.h"

namespace Host {

// The text without the escape sequences of keys that type nothing, such as an arrow (ECMA-48, 5.4). Callers
// refuse other control characters.
Platform::String WithoutEscapes(Platform::StringView typed);

}  // namespace Host
