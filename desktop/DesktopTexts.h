// DesktopTexts: the texts of the windows themselves, in the user's language, from the catalogue TvDesktopRes.
#pragma once

#include <cstdint>

#include "platform/StoredNames.h"
#include "platform/Value.h"

namespace Desktop {

namespace TextNumber = Platform::TextNumber;

// The text of a number with its arguments; empty where the catalogue or the service that reads it can't be
// used. Any thread.
Platform::String DesktopText(std::int32_t number, const Platform::Array& arguments = {});

}  // namespace Desktop
