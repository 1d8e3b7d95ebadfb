// HeaderText: the value of an unstructured header field, such as a subject, as its reader sees it.
//
// Pure functions; any thread.
#pragma once

#include <string>
#include <string_view>

#include "platform/Text.h"

namespace Mime {

using Platform::String;

// The raw value, folded and encoded as it came, to text: unfolded, encoded words decoded, blanks at both ends
// gone. Adjacent encoded words of one charset are one run of bytes, so that a character or a shift state that
// was cut between them survives. Encoded words may have any length. Bytes beyond ASCII outside of encoded
// words are guessed as GuessText does, with the label of the charset that the mail's text has as the likely
// one.
String DecodeHeader(std::string_view raw, std::string_view likelyCharset = {});

// Takes the line ends of the folding out. The blanks at a fold stay, for mail programs fold at a blank; a tab
// there stands in a blank's place and becomes one, or vanishes if the blank stands beside it.
std::string UnfoldHeader(std::string_view raw);

}  // namespace Mime
