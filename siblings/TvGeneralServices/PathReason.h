// PathReason: why a path isn't accepted as that of a project file, in the user's language.
#pragma once

#include <string>

#include "platform/Text.h"

namespace TvGeneralServices {

// The reason, from the path and the present state of the file. Empty if the file is readable, so that the
// fault is in its content, and if the texts can't be loaded. Raises nothing. Any thread.
Platform::String ReasonAgainstPath(const std::string& path);

}  // namespace TvGeneralServices
