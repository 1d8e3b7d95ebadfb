// Texts: what the programs and libraries around the component say to a person, in that person's language.
#pragma once

#include <cstdint>

#include "platform/Text.h"

namespace Runtime {

using Platform::String;
using Platform::StringView;

// The text of one of TextNumber::kPrograms with its arguments in their places. Empty where the text
// service or its catalogue is missing. Raises nothing. Any thread. Reads the registry, so that what reads the
// registry doesn't ask for texts.
String TextOf(std::int32_t number, StringView first = {}, StringView second = {});

}  // namespace Runtime
