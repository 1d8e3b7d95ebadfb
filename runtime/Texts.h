// Texts: what the programs and libraries around the component say to a person, in that person's language.
#pragma once

#include <cstdint>

#include "platform/Text.h"

namespace Runtime {

using Platform::String;
using Platform::StringView;

// The text of one of TextNumber::kPrograms with its arguments in their places. Where the text service or its
// catalogue is missing, a text that names the number. Raises nothing. Any thread.
String TextOf(std::int32_t number, StringView first = {}, StringView second = {});

}  // namespace Runtime
