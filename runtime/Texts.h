// Texts: the texts of the programs and libraries around the component, in the user's language.
#pragma once

#include <cstdint>

#include "platform/Text.h"

namespace Runtime {

using Platform::String;
using Platform::StringView;

// The text of one of TextNumber::kProgramTexts with its arguments: in the user's language, or in English if
// its catalogue is missing. Needs neither the registry nor a component, so that their own failures can be
// reported. Empty only without memory. Raises nothing. Any thread.
String TextOf(std::int32_t number, StringView first = {}, StringView second = {});

// The same in the given language, such as "de": for a mail to someone who reads another one than the user.
// The user's language if it is empty, English if it has no catalogue. Also finds the component's texts.
String TextIn(StringView language, std::int32_t number, StringView first = {}, StringView second = {});

}  // namespace Runtime
