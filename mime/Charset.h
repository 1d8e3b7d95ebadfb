// Charset: the bytes of a mail as text, whatever its label says.
//
// Nothing is dropped: bytes that belong to no character become U+FFFD and a zero byte stays a character.
// Nothing here fails; any thread. Each thread keeps the converters that it used, since opening one is slow.
#pragma once

#include <string>
#include <string_view>

#include "platform/Text.h"

namespace Mime {

using Platform::String;
using Platform::StringView;

// The text of bytes under a charset's label, which ConverterOfLabel reads. A byte order mark of UTF-8 or
// UTF-16 decides before the label and is no part of the text. A label that is empty, unknown or us-ascii
// leaves it to GuessText.
String DecodeText(std::string_view bytes, std::string_view label);

// Text without a usable label: ISO-2022-JP where its escape sequences are; UTF-8 if it is that throughout;
// otherwise that of likely, a label too, where it is one of an 8-bit charset; otherwise windows-1252.
String GuessText(std::string_view bytes, std::string_view likely = {});

}  // namespace Mime
