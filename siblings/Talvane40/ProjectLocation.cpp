#include "siblings/Talvane40/ProjectLocation.h"

#include "platform/Failure.h"
#include "platform/ReasonTexts.h"
#include "runtime/DurableFile.h"
#include "runtime/ProjectText.h"
#include "runtime/Texts.h"

namespace Talvane40 {
namespace {

namespace fs = std::filesystem;
using Runtime::ProjectText;

[[noreturn]] void Refuse(const fs::path& path, std::int32_t text,
                         std::int32_t number = FailureNumber::RefusedInput) {
  throw Failure(number, u"Talvane40", Runtime::TextOf(text, FromUtf8(path.string())));
}

ProjectText Read(const fs::path& file) {
  const std::string bytes = Runtime::ReadSmallFile(file.string(), ProjectText::kLargestFile).Content;
  try {
    return ProjectText(bytes);
  } catch (const Failure&) {
    Refuse(file, TextNumber::kNoProjectFile);
  }
}

}  // namespace

fs::path PathOf(StringView typed) {
  const String path = Trim(typed);
  if (path.empty()) Refuse({}, TextNumber::kNoProjectPath);
  if (path.find(u'\0') != StringView::npos)
    Refuse(ToUtf8(path.substr(0, path.find(u'\0'))), TextNumber::kNoProperName);
  return fs::absolute(ToUtf8(path));
}

ProjectLocation ReadProjectLocation(StringView path) {
  const fs::path file = PathOf(path);
  const ProjectText text = Read(file);
  const auto value = [&text](StringView key) {
    return text.LiteralValue(ProjectHeader::kSection, key).value_or(String());
  };
  const String format = value(ProjectHeader::kFormat), name = value(ProjectHeader::kName),
               database = value(ProjectHeader::kDatabase);
  if (format.empty()) Refuse(file, TextNumber::kNoProjectFile);
  if (format != ProjectHeader::kFormatNumber) Refuse(file, TextNumber::kProjectFileTooNew);
  if (name.empty() || database.empty())
    Refuse(file, TextNumber::kProjectFileDamaged, FailureNumber::DeviceFailed);
  return {name, (file.parent_path() / ToUtf8(database)).lexically_normal()};
}

std::string NewProjectFileText(StringView name, const std::string& database) {
  const auto line = [](StringView key, const std::string& value) { return ToUtf8(key) + "=" + value + "\n"; };
  return "[" + ToUtf8(ProjectHeader::kSection) + "]\n" +
         line(ProjectHeader::kFormat, ToUtf8(ProjectHeader::kFormatNumber)) +
         line(ProjectHeader::kName, ToUtf8(name)) + line(ProjectHeader::kDatabase, database);
}

}  // namespace Talvane40
