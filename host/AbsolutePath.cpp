#include "host/AbsolutePath.h"

#include <algorithm>
#include <filesystem>

#include "host/CommandError.h"

namespace Host {

Platform::String AbsolutePath(const std::string& typed) {
  if (typed.empty()) throw CommandError(WrongUse, Platform::TextNumber::kFileNameEmpty);
  const std::filesystem::path path = std::filesystem::absolute(typed);
  if (std::find(path.begin(), path.end(), "..") == path.end())
    return ArgumentText(path.lexically_normal().string());
  std::error_code error;
  const auto folder = std::filesystem::canonical(path.parent_path(), error);
  // If the folder can't be reached, opening the file reports why.
  return ArgumentText((error ? path : folder / path.filename()).string());
}

}  // namespace Host
