// TextTemplate: a text with placeholders: "%1" to "%9" for arguments, "%%" for a percent sign. Pure
// functions; any thread.
#pragma once

#include <span>

#include "platform/Text.h"

namespace Runtime {

using Platform::String;
using Platform::StringView;

// True if every percent sign of the text belongs to a placeholder.
bool IsTemplate(StringView text);

// The text with the arguments in the place of the placeholders. A percent sign in an argument has no meaning.
// If an argument is empty or missing, the blank before its placeholder is removed too, so that no double
// blank is left.
String Expand(StringView text, std::span<const String> arguments);

}  // namespace Runtime
