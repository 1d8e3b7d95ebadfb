// UuencodedFiles: files that a mail program put into the text itself, as programs older than MIME do.
#pragma once

#include "platform/Text.h"

namespace Mime {

using Platform::String;

// Takes out each file, from its line "begin 644 NAME" up to its line "end". Text that only resembles one
// stays: every line between has to have the length that its first character says. Linear in the size; pure.
void RemoveUuencodedFiles(String& text);

}  // namespace Mime
