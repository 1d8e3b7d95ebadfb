// Charset: the bytes of a mail as text, whatever its label says.
//
// Nothing is dropped: bytes that belong to no character become U+FFFD and a zero byte stays a character.
// Nothing here fails; any thread.
#pragma once

#include <string>
#include <string_view>

#include "platform/Text.h"

namespace Mime {

using Platform::String;
using Platform::StringView;

// The text of bytes under a charset's label. Labels are read as the mails of this world mean them: iso-8859-1
// is windows-1252, gb2312 is its superset gb18030, euc-kr is windows-949. A label that is empty, unknown or
// us-ascii leaves it to GuessText.
String DecodeText(std::string_view bytes, const std::string& label);

// Text without a usable label: UTF-8 if it is that throughout, otherwise windows-1252.
String GuessText(std::string_view bytes);

}  // namespace Mime
