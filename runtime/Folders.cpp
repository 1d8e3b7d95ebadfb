#include "runtime/Folders.h"

#include <dlfcn.h>
#include <link.h>
#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <mutex>

#include "platform/Failure.h"
#include "platform/ReasonTexts.h"
#include "runtime/Texts.h"

namespace Runtime {
namespace {

namespace TextNumber = Platform::TextNumber;

[[noreturn]] void Refuse(std::int32_t text, Platform::StringView argument = {}) {
  throw Platform::Failure(Platform::FailureNumber::PathNotFound, u"Runtime.Folders", TextOf(text, argument));
}

std::string Variable(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

std::string UserFolder() {
  if (std::string home = Variable("HOME"); home.starts_with('/')) return home;
  const passwd* entry = getpwuid(geteuid());
  return entry && entry->pw_dir ? entry->pw_dir : "";
}

std::string WithoutSeparatorAtEnd(std::string path) {
  while (!path.empty() && path.back() == '/') path.pop_back();
  return path;
}

// The full path of a library by the loader's name for it. It is found once, since the working folder and
// symbolic links may change afterwards.
const std::string& PathOfLoaded(const char* name) {
  static auto& lock = *new std::mutex;
  static auto& paths = *new std::map<std::string, std::string, std::less<>>;
  const std::lock_guard guard(lock);
  auto path = paths.find(name);
  if (path == paths.end()) path = paths.emplace(name, FullPath(name)).first;
  return path->second;
}

}  // namespace

std::string HomePath() {
  if (const std::string home = Variable("TALVANE_HOME"); !home.empty()) {
    // A relative path would depend on the working folder.
    if (home.front() != '/') Refuse(TextNumber::kHomeIsRelative, Platform::FromUtf8(home));
    return WithoutSeparatorAtEnd(home);
  }
  if (geteuid() == 0) return "/var/lib/talvane";
  // A relative path is to be ignored (XDG Base Directory, version 0.8).
  if (const std::string data = Variable("XDG_DATA_HOME"); data.starts_with('/'))
    return WithoutSeparatorAtEnd(data) + "/talvane";
  const std::string home = UserFolder();
  if (home.empty()) Refuse(TextNumber::kNoHomeFolder);
  return WithoutSeparatorAtEnd(home) + "/.local/share/talvane";
}

std::string FileOfAddress(const void* address) {
  Dl_info info{};
  link_map* map = nullptr;
  if (!dladdr1(address, &info, reinterpret_cast<void**>(&map), RTLD_DL_LINKMAP) || !map) return {};
  // The loader's name of the program is empty.
  if (map->l_name[0] != '\0') return PathOfLoaded(map->l_name);
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/exe", error).string();
}

std::string FullPath(const std::string& path) {
  std::error_code error;
  const std::filesystem::path full = std::filesystem::absolute(path, error);
  const std::filesystem::path folder = std::filesystem::canonical(full.parent_path(), error);
  return (error ? full.lexically_normal() : folder / full.filename()).string();
}

std::string FolderOfPath(const std::string& path) {
  const auto separator = path.rfind('/');
  if (separator == std::string::npos) return ".";
  return separator == 0 ? "/" : path.substr(0, separator);
}

const std::string& LibraryPath() {
  static const char anchor = 0;
  static const std::string path = FolderOfPath(FileOfAddress(&anchor));
  return path;
}

std::string DataPath() {
  return FullPath(LibraryPath() + "/" TALVANE_DATA_FROM_LIBRARIES);
}

String HomeFolder() {
  return Platform::FromUtf8(HomePath());
}

String LibraryFolder() {
  return Platform::FromUtf8(LibraryPath());
}

}  // namespace Runtime
