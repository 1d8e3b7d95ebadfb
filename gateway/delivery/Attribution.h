// Attribution: the lines by which a mail program says whose mail it quotes, such as "On 2 Nov 2026 at 09:14,
// Alice wrote:", or "-----Original Message-----" with the header lines of that mail.
#pragma once

#include <cstddef>

#include "platform/Text.h"

namespace Gateway {

using Platform::StringView;

// The length of what the writer wrote in the text in front of a quote. The attribution at its end, quoted or
// not, and the blank lines and bare quote signs around it don't count. A line is an attribution only in the
// complete form of a known mail program; any other end of the text is the writer's. Pure; linear in the size
// of the text.
std::size_t EndOfOwnText(StringView text);

}  // namespace Gateway
