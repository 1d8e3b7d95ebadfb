// AttributionSentence: a sentence compared with the sentences by which mail programs introduce a quote.
#pragma once

#include "platform/Text.h"

namespace Gateway {

using Platform::StringView;

// Where a sentence must show that it is complete. One that begins with a word of its language or with a date
// does; one that begins with a name has no sure beginning, since the line above may belong to the name.
enum class SentenceBegin { Sure, Name };

// True if the whole of sentence has the shape of one in the table of languages that begins so. Blanks are
// single space characters. Dashes may stand around it, and then its colon may be missing. Pure; any thread.
bool IsAttributionSentence(StringView sentence, SentenceBegin begin);

}  // namespace Gateway
