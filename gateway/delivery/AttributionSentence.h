// AttributionSentence: compares a sentence with the sentences that introduce a quote.
#pragma once

#include "platform/Text.h"

namespace Gateway {

using Platform::StringView;

// Whether the sentence must be complete. One that begins with a word of its language or with a date is
// complete; for one that begins with a name, the line above may belong to the name.
enum class SentenceBegin { Sure, Name };

// True if the text contains a year of four digits, or a date of numbers with a year of two, as in "02.11.26".
// Pure; any thread.
bool HoldsDate(StringView text);

// True if the text contains a time of day: "9:14", "09.14" or "9h14". Pure; any thread.
bool HoldsTime(StringView text);

// True if the whole of sentence has the shape of one in the table of languages that begins so. Blanks are
// single space characters. A time of day or an address in brackets has to be part of it.
// Dashes may stand around it, and then its colon may be missing. Pure; any thread.
bool IsAttributionSentence(StringView sentence, SentenceBegin begin);

}  // namespace Gateway
