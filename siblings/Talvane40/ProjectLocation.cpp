#include "siblings/Talvane40/ProjectLocation.h"

#include "platform/Failure.h"
#include "runtime/DurableFile.h"
#include "runtime/ProjectText.h"

namespace Talvane40 {
namespace {

namespace fs = std::filesystem;
using Runtime::ProjectText;

[[noreturn]] void Refuse(const fs::path& path, const std::string& why, std::int32_t number) {
  throw Failure(number, u"Talvane40", FromUtf8("The file " + path.string() + " " + why));
}

ProjectText Read(const fs::path& file) {
  const std::string bytes = Runtime::ReadSmallFile(file.string(), ProjectText::kLargestFile).Content;
  try {
    return ProjectText(bytes);
  } catch (const Failure&) {
    Refuse(file, "is not a project file.", FailureNumber::RefusedInput);
  }
}

}  // namespace

fs::path PathOf(StringView typed) {
  const String path = Trim(typed);
  if (path.empty()) throw Failure(FailureNumber::RefusedInput, u"Talvane40", u"No project path is given.");
  if (path.find(u'\0') != StringView::npos)
    Refuse(ToUtf8(path.substr(0, path.find(u'\0'))), "has no proper name.", FailureNumber::RefusedInput);
  return fs::absolute(ToUtf8(path));
}

ProjectLocation ReadProjectLocation(StringView path) {
  const fs::path file = PathOf(path);
  const ProjectText text = Read(file);
  const auto value = [&text](StringView key) {
    return text.LiteralValue(ProjectText::kProjectSection, key).value_or(String());
  };
  const String format = value(u"Format"), name = value(u"Name"), database = value(u"Database");
  if (format.empty()) Refuse(file, "is not a project file.", FailureNumber::RefusedInput);
  if (format != u"1")
    Refuse(file, "was made by a newer version of Talvane. Use that version.", FailureNumber::RefusedInput);
  if (name.empty() || database.empty())
    Refuse(file,
           "is damaged: its section [Project] lacks the name or the database. Restore it from a backup.",
           FailureNumber::DeviceFailed);
  return {name, (file.parent_path() / ToUtf8(database)).lexically_normal()};
}

std::string NewProjectFileText(StringView name, const std::string& database) {
  return "[Project]\nFormat=1\nName=" + ToUtf8(name) + "\nDatabase=" + database + "\n";
}

}  // namespace Talvane40
