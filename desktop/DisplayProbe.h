// DisplayProbe: whether windows can be opened.
#pragma once

#include <string>

namespace Desktop {

// Qt ends the process if it can't open a display, so a separate program tries first: some 50 ms, 10 s at
// most. If it returns false, reason says why, for the user. Raises no failure. Any thread.
bool CanOpenDisplay(std::string& reason);

}  // namespace Desktop
