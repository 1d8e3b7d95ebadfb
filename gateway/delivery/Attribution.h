// Attribution: the lines by which a mail program says whose mail it quotes, such as "On 2 Nov 2026 at 09:14,
// Alice wrote:", or "-----Original Message-----" with the header lines of that mail.
#pragma once

#include <cstddef>

#include "platform/Text.h"

namespace Gateway {

using Platform::StringView;

// How much of the text in front of a quote its writer has written: all of it but the attribution at its end,
// quoted or not, and the blank lines and bare quote signs around that. A line is taken for an attribution
// only in the full shape that a known program gives it; whatever else the text ends with is its writer's.
// Pure; takes time in proportion to the text at most.
std::size_t EndOfOwnText(StringView text);

}  // namespace Gateway
