#include "siblings/Talvane40/ProjectFile.h"

#include <map>

#include "platform/Failure.h"
#include "runtime/DurableFile.h"

namespace Talvane40 {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLargest = 1 << 20;  // bytes; no project file comes near it

[[noreturn]] void Refuse(const fs::path& path, const std::string& why,
                         std::int32_t number = FailureNumber::DeviceFailed) {
  throw Failure(number, u"Talvane40", FromUtf8("The file " + path.string() + " " + why));
}

std::string_view Trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(" \t\r");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

std::string Lowered(std::string_view text) {
  return ToUtf8(FoldCase(FromUtf8(text)));
}

// The keys of the section [Project], in lower case. Of a key that comes twice the first counts.
std::map<std::string, std::string> ProjectSection(std::string_view text) {
  std::map<std::string, std::string> keys;
  bool inside = false;
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = Trimmed(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.starts_with('[')) {
      inside = Lowered(line) == "[project]";
    } else if (const auto equals = line.find('='); inside && equals != std::string_view::npos) {
      keys.emplace(Lowered(Trimmed(line.substr(0, equals))), Trimmed(line.substr(equals + 1)));
    }
  }
  return keys;
}

}  // namespace

fs::path PathOf(StringView typed) {
  const String path = Trim(typed);
  if (path.empty()) throw Failure(FailureNumber::RefusedInput, u"Talvane40", u"No project path is given.");
  if (path.find(u'\0') != StringView::npos)
    Refuse(ToUtf8(path.substr(0, path.find(u'\0'))), "has no proper name.", FailureNumber::RefusedInput);
  return fs::absolute(ToUtf8(path));
}

ProjectFile ReadProjectFile(StringView path) {
  const fs::path file = PathOf(path);
  const std::string text = Runtime::ReadSmallFile(file.string(), kLargest).Content;
  auto keys = ProjectSection(text);
  const std::string& format = keys["format"];
  const std::string& name = keys["name"];
  const std::string& database = keys["database"];
  if (!IsUtf8(text) || text.find('\0') != std::string::npos || format.empty())
    Refuse(file, "is not a project file.", FailureNumber::RefusedInput);
  if (format != "1")
    Refuse(file, "was made by a newer version of Talvane, whose projects can't be opened here.",
           FailureNumber::RefusedInput);
  if (name.empty() || database.empty()) {
    Refuse(file, "is damaged: its section [Project] lacks the name or the database.");
  }
  return {FromUtf8(name), (file.parent_path() / database).lexically_normal()};
}

std::string NewProjectFileText(StringView name, const std::string& database) {
  return "[Project]\nFormat=1\nName=" + ToUtf8(name) + "\nDatabase=" + database + "\n";
}

}  // namespace Talvane40
