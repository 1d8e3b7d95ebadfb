// PathCompletion: the rest of a path that a person begins to type.
#pragma once

#include <string>
#include <vector>

namespace Host {

struct Completion {
  std::string Path;                  // as far as it is certain; a folder ends in "/"
  std::vector<std::string> Choices;  // the names that go on from there, sorted; empty where none does
};

// True for the beginning of a path: what begins with "/", "~/", "./" or "../".
bool LooksLikePath(const std::string& typed);

// The whole path for what was typed: "~/" is the home folder, and other relative paths begin in the present
// one.
std::string WholePath(const std::string& typed);

// Reads the folder that the typed path leads to. Names that aren't UTF-8 and hidden ones are left out, hidden
// ones unless their point was typed.
Completion CompletePath(const std::string& typed);

}  // namespace Host
