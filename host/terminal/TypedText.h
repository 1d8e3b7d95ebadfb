// TypedText: what a person meant to type.
#pragma once

#include "platform/Text.h"

namespace Host {

// The text without the escape sequences of keys that type nothing, such as an arrow (ECMA-48, 5.4). What a
// terminal sends for such a key is never stored; whoever takes the text refuses other control characters.
Platform::String WithoutEscapes(Platform::StringView typed);

}  // namespace Host
