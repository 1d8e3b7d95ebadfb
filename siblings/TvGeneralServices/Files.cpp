#include "siblings/TvGeneralServices/Files.h"

#include "siblings/TvGeneralServices/PathReason.h"
#include "siblings/TvGeneralServices/ProjectFile.h"

namespace TvGeneralServices {

const Files::Table& Files::Members() {
  static const Table table = {
      Method(u"CheckTVSFilePath", 1, &Files::CheckTVSFilePath),
      Method(u"RetrieveTVSFile", 1, &Files::RetrieveTVSFile),
  };
  return table;
}

namespace {

// Blanks around a path are no part of it: what is typed with them is stored without them.
std::string VettedPath(const Value& typed) {
  const std::string path = ToUtf8(Trim(typed.ToString()));
  const auto end = path.find('\0');
  if (path.empty() || end != std::string::npos)
    throw Failure(FailureNumber::RefusedInput, u"TvGeneralServices.Files",
                  path.empty()
                      ? ReasonAgainstPath(path)
                      : FromUtf8(path.substr(0, end)) + u" is followed by a NUL, which no path can hold");
  return path;
}

}  // namespace

// The path was typed by a person, who reads why it is refused.
Value Files::CheckTVSFilePath(std::span<Value> arguments) {
  const std::string path = VettedPath(arguments[0]);
  try {
    // A path from the present folder on would name another file, or none, from another one.
    if (!path.starts_with('/')) Raise(FailureNumber::RefusedInput, FromUtf8(path));
    const ProjectFile readable(path);
  } catch (const Failure& failure) {
    const String reason = ReasonAgainstPath(path);
    if (reason.empty()) throw;
    throw Failure(failure.Number(), u"TvGeneralServices.Files", reason);
  }
  return {};
}

Value Files::RetrieveTVSFile(std::span<Value> arguments) {
  return ObjectRef(std::make_shared<ProjectFile>(VettedPath(arguments[0])));
}

}  // namespace TvGeneralServices
