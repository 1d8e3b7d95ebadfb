// PartText: decodes the text of one part.
#pragma once

#include <string>

#include "mime/MessageParser.h"
#include "platform/Text.h"

namespace Mime {

using Platform::String;
using Platform::StringView;

enum class TextKind { None, Plain, Html, Markup };  // Markup: text/enriched and text/markdown

// The kind of a part's type. An unreadable type is plain text (RFC 2045 section 5.2).
TextKind KindOf(GMimePart* part);

// The value of a parameter of Content-Type; empty without it.
std::string ParameterOf(GMimePart* part, const char* name);

// The part's bytes without transfer encoding; see DecodeTransfer.
std::string_view ContentOf(const ParsedMessage& message, GMimePart* part, std::string& storage);

// The part as text, by its kind; TextKind::None counts as plain text. If charset is empty, it is set to the
// label that was used.
String TextOf(const ParsedMessage& message, GMimePart* part, std::string& charset);

// True without a visible character. Blanks, no-break spaces, line ends and characters without width are
// invisible.
bool IsBlankText(StringView text);

}  // namespace Mime
