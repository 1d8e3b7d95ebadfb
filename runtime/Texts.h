// Texts: the texts of the programs and libraries around the component, in the user's language.
#pragma once

#include <cstdint>

#include "platform/Text.h"

namespace Runtime {

using Platform::String;
using Platform::StringView;

// The text of one of TextNumber::kProgramTexts with its arguments. Empty if the text service or its catalogue
// can't be loaded. Raises nothing. Any thread. It reads the registry, so the registry's own code must not
// call it.
String TextOf(std::int32_t number, StringView first = {}, StringView second = {});

}  // namespace Runtime
