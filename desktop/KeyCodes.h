// KeyCodes: keys by the platform's numbers.
#pragma once

#include <cstdint>

namespace Desktop {

// The platform's number of a key, for those keys that a form may want; 0 for the others.
std::int32_t KeyCodeOf(int key);

}  // namespace Desktop
