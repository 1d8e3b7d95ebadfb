// FailureReason: the reason of a failure that the component caught and reports only as its own general text.
#pragma once

#include "platform/Text.h"

namespace Host {

using Platform::String;
using Platform::StringView;

// The text of a message box without blanks at its ends. If a file or a store could not be read or written
// since the last call, its reason is added as a paragraph, unless the text contains it. Failures are known
// while a Platform::FailureWatch exists on this thread.
String WithReason(StringView boxText);

}  // namespace Host
