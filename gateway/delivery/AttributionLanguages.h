// AttributionLanguages: the forms of an attribution in each language.
//
// To add a language, add its row. Alternatives are separated by "|".
#pragma once

#include <span>

#include "platform/Text.h"

namespace Gateway {

using Platform::StringView;

struct AttributionLanguage {
  const char* Name;

  // Sentences that end with a colon. "{date}" is a text that begins with a date after at most three words, or
  // after at most one at the start of the sentence; "{address}" a text with a mail address; "{name}" any
  // text; "{date+address}" has both. A "{date}" may contain a name, and an "{address}" a date.
  StringView Sentences;

  // The text between dashes above the header lines.
  StringView Headings;

  // The names of the header lines: sender, date, recipient, subject; and optional ones.
  StringView From, Date, To, Subject, More;
};

std::span<const AttributionLanguage> AttributionLanguages();

// Removes the first of the alternatives and returns it.
StringView TakeAlternative(StringView& alternatives);

// True for the name of a header line in any language, in any case. Any thread.
bool IsHeaderName(StringView word);

}  // namespace Gateway
