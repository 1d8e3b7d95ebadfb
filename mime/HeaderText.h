// HeaderText: decodes the value of an unstructured header field, such as a subject.
//
// Pure functions; any thread.
#pragma once

#include <string>
#include <string_view>

#include "platform/Text.h"

namespace Mime {

using Platform::String;

// Decodes the raw, folded value: unfolded, encoded words decoded (RFC 2047), blanks at both ends removed.
// Adjacent encoded words of one charset are decoded as one sequence of bytes, so that a character or a shift
// state may be split between them. Encoded words may have any length. Bytes beyond ASCII outside of encoded
// words are decoded by GuessText; likely is the charset of the mail's text.
String DecodeHeader(std::string_view raw, std::string_view likelyCharset = {});

// Unfolds the value. The blanks at a fold are kept, since mail programs fold at a blank. A tab there becomes
// a blank, or is removed next to a blank.
std::string UnfoldHeader(std::string_view raw);

}  // namespace Mime
