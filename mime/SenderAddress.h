// SenderAddress: the address of a mail's sender, also from a malformed From field.
#pragma once

#include <optional>
#include <string_view>

#include "mime/MessageParser.h"
#include "platform/Text.h"

namespace Mime {

using Platform::String;

// The first address of the From field that has an "@", including group members. If the field can't be parsed
// so: the content of its last angle brackets with an "@", or its only word with one. "mailto:" and quotes
// around it are removed. Without any "@", the first address that GMime finds; nothing without a field or an
// address. likelyCharset is used for a field with raw 8-bit bytes.
std::optional<String> SenderAddress(const ParsedMessage& message, std::string_view likelyCharset);

}  // namespace Mime
