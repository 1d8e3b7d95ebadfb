// Template: a text with places for arguments.
//
// "%1" to "%9" are the places and "%%" is a percent sign. Pure; any thread.
#pragma once

#include <span>

#include "platform/Text.h"

namespace TvResourceServices {

using namespace Platform;

// True if every percent sign of the text is part of a place or of "%%".
bool IsTemplate(StringView text);

// The text with the arguments at their places. An argument is put in as it is: a percent sign in it means
// nothing. A place whose argument is empty or not given takes the blank in front of it along, so that a text
// reads well without the argument too.
String Expand(StringView text, std::span<const String> arguments);

}  // namespace TvResourceServices
