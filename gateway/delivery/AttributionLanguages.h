// AttributionLanguages: how mail programs word an attribution in each language.
//
// To add a language, add its row. Alternatives are separated by "|".
#pragma once

#include <span>

#include "platform/Text.h"

namespace Gateway {

using Platform::StringView;

struct AttributionLanguage {
  const char* Name;

  // Sentences with a colon at their end. "{date}" is a text that begins with a date behind three words at
  // most, or behind one where it begins the sentence; "{address}" a text with a mail address; "{name}" any
  // text;
  // "{date+address}" is both. A name may follow in a "{date}" and a date in an "{address}".
  StringView Sentences;

  // The words between dashes above the header lines.
  StringView Headings;

  // The names of the header lines: who wrote, when, to whom, what of; and those that a program may add.
  StringView From, Date, To, Subject, More;
};

std::span<const AttributionLanguage> AttributionLanguages();

}  // namespace Gateway
