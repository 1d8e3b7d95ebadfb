// UuencodedFiles: removes uuencoded files from a text, where programs older than MIME put them.
#pragma once

#include "platform/Text.h"

namespace Mime {

using Platform::String;

// Removes each file, from its line "begin 644 NAME" to its line "end". Text that only resembles a file is
// kept: each line between must have the length that its first character gives. Linear in the size; pure.
void RemoveUuencodedFiles(String& text);

}  // namespace Mime
