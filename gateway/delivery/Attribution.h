// Attribution: the lines by which a mail program says whose mail it quotes, such as "On 2 Nov 2026 at 09:14,
// Alice wrote:", or "-----Original Message-----" with the header lines of that mail.
#pragma once

#include <cstddef>

#include "platform/Text.h"

namespace Gateway {

using Platform::StringView;

// The length of the writer's own text in the text before a quote: without the attribution at its end,
// quoted or not, and without the blank lines and bare quote signs around it. Lines are taken for an
// attribution only in the complete form of a known mail program. Pure; linear in the size of the text.
std::size_t EndOfOwnText(StringView text);

}  // namespace Gateway
