#include "siblings/TvGeneralServices/Files.h"

#include "siblings/TvGeneralServices/ProjectFile.h"

namespace TvGeneralServices {

const Files::Table& Files::Members() {
  static const Table table = {
      Method(u"CheckTVSFilePath", 1, &Files::CheckTVSFilePath),
      Method(u"RetrieveTVSFile", 1, &Files::RetrieveTVSFile),
  };
  return table;
}

Value Files::CheckTVSFilePath(std::span<Value> arguments) {
  const String path = arguments[0].ToString();
  // A path from the present folder on would name another file, or none, from another one.
  if (!path.empty() && !path.starts_with(u'/')) {
    throw Failure(FailureNumber::InvalidArgument, u"TvGeneralServices.Files",
                  path + u" isn't the whole path of the project file; give the whole path, beginning with /");
  }
  const ProjectFile readable(ToUtf8(path));
  return {};
}

Value Files::RetrieveTVSFile(std::span<Value> arguments) {
  return ObjectRef(std::make_shared<ProjectFile>(ToUtf8(arguments[0].ToString())));
}

}  // namespace TvGeneralServices
