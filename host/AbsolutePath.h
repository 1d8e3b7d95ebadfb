// AbsolutePath: what is stored or handed to a sibling doesn't depend on the folder in which tvmail was
// called.
#pragma once

#include <filesystem>

#include "host/Complaint.h"

namespace Host {

// The whole path of a file that a user typed. Raises a Complaint for one that isn't UTF-8.
inline Platform::String AbsolutePath(const std::string& typed) {
  if (typed.empty()) throw Complaint(WrongUse, "a file's name is empty: name the file");
  return Typed(std::filesystem::absolute(typed).lexically_normal().string());
}

}  // namespace Host
