// PathCompletion: completes a path that the user has begun to type.
#pragma once

#include <string>
#include <vector>

namespace Host {

struct Completion {
  std::string Path;                  // the common part of all choices; a folder ends in "/"
  std::vector<std::string> Choices;  // the possible names, sorted; empty if there are none
};

// True if the text begins like a path: with "/", "~/", "./" or "../".
bool LooksLikePath(const std::string& typed);

// The absolute path for a typed one: "~/" is the home folder, and relative paths begin in the current folder.
std::string WholePath(const std::string& typed);

// Reads the folder of the typed path. Leaves out names that aren't UTF-8, and hidden ones unless their dot
// was typed.
Completion CompletePath(const std::string& typed);

}  // namespace Host
