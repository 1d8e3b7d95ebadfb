// HtmlEntities: the character references of HTML, such as "&auml;", "&#228;" and "&#xE4;".
#pragma once

#include <cstddef>

#include "platform/Text.h"

namespace Mime {

using Platform::String;
using Platform::StringView;

struct HtmlReference {
  String Characters;
  std::size_t Length = 0;  // of the reference in the document; 0: the "&" is no reference
};

// The reference with which the text begins, as the HTML standard reads it (WHATWG HTML, 13.2.5.72 to 80): a
// number of the C1 range means windows-1252, and one that is no character U+FFFD. In an attribute a name
// without ";" in front of "=", a letter or a digit is none. In constant time. Any thread.
HtmlReference ReadHtmlReference(StringView text, bool inAttribute = false);

// An attribute's value with its references decoded.
String DecodeHtmlAttribute(StringView value);

// What a character of the C1 range means in HTML, that of windows-1252; every other one means itself.
char16_t WithoutC1(char16_t c);

}  // namespace Mime
