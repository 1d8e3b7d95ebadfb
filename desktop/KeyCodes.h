// KeyCodes: Qt's keys as the platform's key codes.
#pragma once

#include <cstdint>

namespace Desktop {

// The platform's code of a Qt::Key: function keys, letters, digits, arrows, Tab, Enter, Escape and Space. 0
// for every other key.
std::int32_t KeyCodeOf(int key);

}  // namespace Desktop
