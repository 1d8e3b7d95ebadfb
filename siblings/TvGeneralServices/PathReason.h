// PathReason: why a path can't be that of a project file, for the person who typed it.
#pragma once

#include <string>

#include "platform/Text.h"

namespace TvGeneralServices {

// The reason in the user's language, told from what is at the path now. Empty where a readable file is there,
// whose content is then at fault, and where the texts are missing. Raises nothing.
Platform::String ReasonAgainstPath(const std::string& path);

}  // namespace TvGeneralServices
