#include "siblings/TvGeneralServices/Files.h"

#include "siblings/TvGeneralServices/PathReason.h"
#include "siblings/TvGeneralServices/ProjectFileObject.h"

namespace TvGeneralServices {

const Files::Table& Files::Members() {
  static const Table table = {
      Method(u"CheckTVSFilePath", 1, &Files::CheckTVSFilePath),
      Method(u"RetrieveTVSFile", 1, &Files::RetrieveTVSFile),
  };
  return table;
}

namespace {

// The path without blanks at its ends. Raises 380 if it is empty or holds a NUL.
std::string VettedPath(const Value& typed) {
  const std::string path = ToUtf8(Trim(typed.ToString()));
  const auto end = path.find('\0');
  if (path.empty() || end != std::string::npos)
    throw Failure(FailureNumber::RefusedInput, u"TvGeneralServices.Files",
                  path.empty() ? ReasonAgainstPath(path)
                               : FromUtf8(path.substr(0, end)) +
                                     u" is followed by a NUL, which no path can hold; remove it");
  return path;
}

}  // namespace

Value Files::CheckTVSFilePath(std::span<Value> arguments) {
  const std::string path = VettedPath(arguments[0]);
  try {
    if (!path.starts_with('/'))
      Raise(FailureNumber::RefusedInput, FromUtf8(path) + u" is a relative path; enter the absolute path");
    const ProjectFileObject readable(path);
  } catch (const Failure& failure) {
    const String reason = ReasonAgainstPath(path);
    if (reason.empty()) throw;
    throw Failure(failure.Number(), u"TvGeneralServices.Files", reason);
  }
  return {};
}

Value Files::RetrieveTVSFile(std::span<Value> arguments) {
  return ObjectRef(std::make_shared<ProjectFileObject>(VettedPath(arguments[0])));
}

}  // namespace TvGeneralServices
