#include "host/terminal/HelpPages.h"

#include <filesystem>

#include "runtime/Process.h"

namespace Host {

namespace {

std::optional<String> FindPage(const std::string& name) {
  // Installed beside the libraries or in the system's folder of documents, or in the source tree of a build.
  const std::filesystem::path libraries(Platform::ToUtf8(Runtime::LibraryFolder()));
  for (const char* folder : {"help", "../help", "../share/doc/talvane/help", "../../../docs/help"}) {
    const std::filesystem::path page = (libraries / folder / name).lexically_normal();
    std::error_code error;
    if (std::filesystem::is_regular_file(page, error)) return Platform::FromUtf8(page.string());
  }
  return std::nullopt;
}

}  // namespace

std::optional<String> FindHelpPage(const std::string& helpFile, std::uint32_t context) {
  const std::string file = helpFile.substr(0, helpFile.find('>'));
  const std::string name = file.substr(file.find_last_of("/\\") + 1);
  return FindPage(name.substr(0, name.find('.')) + "-" + std::to_string(context) + ".html");
}

std::optional<String> FindHelpPage(StringView topic) {
  return FindPage(std::filesystem::path(Platform::ToUtf8(topic)).filename().string());
}

}  // namespace Host
