// PrintedText: texts that came from outside, made safe for a person's terminal.
#pragma once

#include <string>

#include "platform/Text.h"

namespace Host {

// The text in UTF-8. A control character, with which a stranger's mail could steer the terminal, becomes
// U+FFFD; tabs and line ends stay, and CR LF or CR alone becomes LF.
std::string Printed(Platform::StringView text);

}  // namespace Host
