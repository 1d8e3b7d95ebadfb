// PartText: the text of one part.
#pragma once

#include <string>

#include "mime/MessageParser.h"
#include "platform/Text.h"

namespace Mime {

using Platform::String;
using Platform::StringView;

enum class TextKind { None, Plain, Html, Markup };  // Markup: text/enriched and text/markdown

// What a part's type says. A type that can't be read is plain text, as RFC 2045 section 5.2 has it.
TextKind KindOf(GMimePart* part);

// The value of a parameter of Content-Type; empty without it.
std::string ParameterOf(GMimePart* part, const char* name);

// The part's bytes with its transfer encoding undone, as DecodeTransfer gives them.
std::string_view ContentOf(const ParsedMessage& message, GMimePart* part, std::string& storage);

// The part as text by its kind, with TextKind::None as plain text. charset becomes the label that the text
// was read by, if it is empty and there is one.
String TextOf(const ParsedMessage& message, GMimePart* part, std::string& charset);

// True without a character that shows: blanks, no-break spaces, line ends and characters without width don't.
bool IsBlankText(StringView text);

}  // namespace Mime
