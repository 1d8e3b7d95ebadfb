// DisplayProbe: whether windows can be opened at all.
#pragma once

#include <string>

namespace Desktop {

// Qt ends the process if it finds no display, so a program of its own tries first. False: reason says why, in
// words for the user. Takes some 50 ms.
bool CanOpenDisplay(std::string& reason);

}  // namespace Desktop
