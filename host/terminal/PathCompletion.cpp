#include "host/terminal/PathCompletion.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "platform/Text.h"

namespace Host {

namespace {

namespace fs = std::filesystem;

// The names in a folder that begin so. Names of folders get a "/".
std::vector<std::string> NamesIn(const std::string& folder, const std::string& beginning) {
  std::vector<std::string> names;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    std::string name = entry->path().filename().string();
    if (!name.starts_with(beginning) || !Platform::IsUtf8(name)) continue;
    if (name.starts_with('.') && beginning.empty()) continue;
    std::error_code unreachable;
    if (entry->is_directory(unreachable)) name += '/';
    names.push_back(std::move(name));
  }
  std::sort(names.begin(), names.end());
  return names;
}

// The longest common beginning of all names, cut between two characters.
std::string CommonBeginning(const std::vector<std::string>& names) {
  const std::string& first = names.front();
  const std::string& last = names.back();
  std::size_t length = 0;
  while (length < std::min(first.size(), last.size()) && first[length] == last[length]) ++length;
  while (!Platform::IsUtf8(first.substr(0, length))) --length;
  return first.substr(0, length);
}

}  // namespace

bool LooksLikePath(const std::string& typed) {
  return typed.starts_with('/') || typed.starts_with("~/") || typed.starts_with("./") ||
         typed.starts_with("../");
}

std::string WholePath(const std::string& typed) {
  const char* home = std::getenv("HOME");
  if (typed.starts_with("~/") && home && *home) return home + typed.substr(1);
  if (typed.empty() || typed.starts_with('/')) return typed;
  std::error_code error;
  const fs::path whole = fs::absolute(typed, error);
  return error ? typed : whole.lexically_normal().string();
}

Completion CompletePath(const std::string& typed) {
  const std::string path = WholePath(typed);
  const std::size_t nameAt = path.rfind('/') + 1;
  const std::string folder = path.substr(0, nameAt);
  Completion completion{path, NamesIn(folder, path.substr(nameAt))};
  if (!completion.Choices.empty()) completion.Path = folder + CommonBeginning(completion.Choices);
  return completion;
}

}  // namespace Host
