// AbsolutePath: what is stored or handed to a sibling doesn't depend on the folder in which tvmail was
// called.
#pragma once

#include "platform/Text.h"

namespace Host {

// The whole path of a file that a user typed, which leads to the file that the typed one leads to. Links
// stand as they were typed; a path with ".." has those in front of its last name resolved, since behind a
// link ".." isn't the folder in which the link lies. Raises a CommandError for one that is empty or isn't
// UTF-8.
Platform::String AbsolutePath(const std::string& typed);

}  // namespace Host
