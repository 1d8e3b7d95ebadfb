// Charset: decodes the bytes of a mail, even if their label is wrong.
//
// Nothing is dropped: bytes that form no character become U+FFFD, and a zero byte is kept as a character.
// Nothing here fails; any thread. Each thread caches its converters, since opening one is slow.
#pragma once

#include <string>
#include <string_view>

#include "platform/Text.h"

namespace Mime {

using Platform::String;
using Platform::StringView;

// Decodes bytes by a charset's label, see ConverterOfLabel. A byte order mark of UTF-8 or UTF-16 takes
// precedence over the label and is removed. With an empty or unknown label, or us-ascii, the result is that
// of GuessText.
String DecodeText(std::string_view bytes, std::string_view label);

// Decodes text without a usable label: as ISO-2022-JP if it contains its escape sequences; as UTF-8 if it is
// valid UTF-8; else by likely, a label, if that is an 8-bit charset; else as windows-1252.
String GuessText(std::string_view bytes, std::string_view likely = {});

}  // namespace Mime
