// AbsolutePath: paths that no longer depend on the current folder.
#pragma once

#include "platform/Text.h"

namespace Host {

// The absolute path of a file that a user typed, which leads to the same file as the typed one. Symbolic
// links are kept. In a path with "..", links in front of the last name are resolved, since ".." after a link
// isn't the folder that holds the link. Raises a CommandError for an empty path, or one that isn't UTF-8 or
// holds control characters.
Platform::String AbsolutePath(const std::string& typed);

}  // namespace Host
