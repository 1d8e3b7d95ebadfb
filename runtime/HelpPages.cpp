#include "runtime/HelpPages.h"

#include <filesystem>

#include "runtime/Folders.h"
#include "runtime/Language.h"

namespace Runtime {
namespace {

namespace fs = std::filesystem;

std::optional<std::string> FindPage(const std::string& name) {
  for (const std::string& language : {UserLanguage(), std::string("en")}) {
    for (const std::string& folder : HelpFolders()) {
      const fs::path page = (language == "en" ? fs::path(folder) : fs::path(folder) / language) / name;
      std::error_code error;
      if (fs::is_regular_file(page, error)) return page.string();
    }
  }
  return std::nullopt;
}

}  // namespace

std::vector<std::string> HelpFolders() {
  // The first two are for a build, the last one for an installation.
  return {LibraryPath() + "/help", FolderOfPath(LibraryPath()) + "/help", DataPath() + "/help"};
}

std::optional<std::string> FindHelpPage(const std::string& helpFile, std::uint32_t context) {
  const std::string file = helpFile.substr(0, helpFile.find('>'));
  const std::string name = file.substr(file.find_last_of("/\\") + 1);
  return FindPage(name.substr(0, name.rfind('.')) + "-" + std::to_string(context) + ".html");
}

std::optional<std::string> FindHelpPage(StringView topic) {
  const std::string path = Platform::ToUtf8(topic);
  return FindPage(path.substr(path.find_last_of("/\\") + 1));
}

}  // namespace Runtime
