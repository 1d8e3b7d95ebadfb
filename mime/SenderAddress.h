// SenderAddress: the address of a mail's sender, as sloppy as the From field may be.
#pragma once

#include <optional>
#include <string_view>

#include "mime/MessageParser.h"
#include "platform/Text.h"

namespace Mime {

using Platform::String;

// The first address of the From field that has an "@", members of groups included. Where the field can't be
// read so: what stands in its last angle brackets with an "@", or its only word with one. "mailto:" and
// quotes around it go. Without any "@" the first address that GMime finds; none without a field or address.
// The address is in the form of Platform::CanonicalAddress. likelyCharset is for a field with raw 8-bit
// bytes.
std::optional<String> SenderAddress(const ParsedMessage& message, std::string_view likelyCharset);

}  // namespace Mime
