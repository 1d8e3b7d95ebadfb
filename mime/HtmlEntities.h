// HtmlEntities: decodes the character references of HTML, such as "&auml;", "&#228;" and "&#xE4;".
#pragma once

#include <cstddef>

#include "platform/Text.h"

namespace Mime {

using Platform::String;
using Platform::StringView;

struct HtmlReference {
  String Characters;
  std::size_t Length = 0;  // of the reference in the document; 0 if the "&" is no reference
};

// The reference at the start of the text, read by the HTML standard (WHATWG HTML, 13.2.5.72 to 80): a number
// of the C1 range is decoded as windows-1252, and an invalid one gives U+FFFD. In an attribute a name without
// ";" before "=", a letter or a digit is no reference. Constant time. Any thread.
HtmlReference ReadHtmlReference(StringView text, bool inAttribute = false);

// Decodes the references in an attribute's value.
String DecodeHtmlAttribute(StringView value);

// The character for one of the C1 range, decoded as windows-1252; any other character is returned unchanged.
char16_t WithoutC1(char16_t c);

}  // namespace Mime
