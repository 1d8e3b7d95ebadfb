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
  const ProjectFile readable(ToUtf8(arguments[0].ToString()));
  return {};
}

Value Files::RetrieveTVSFile(std::span<Value> arguments) {
  return ObjectRef(std::make_shared<ProjectFile>(ToUtf8(arguments[0].ToString())));
}

}  // namespace TvGeneralServices
