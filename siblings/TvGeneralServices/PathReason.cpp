#include "siblings/TvGeneralServices/PathReason.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/ProgramTexts.h"
#include "runtime/ProjectText.h"
#include "runtime/SystemReason.h"
#include "runtime/Texts.h"

namespace TvGeneralServices {

namespace TextNumber = Platform::TextNumber;

Platform::String ReasonAgainstPath(const std::string& path) {
  const auto reason = [shown = Platform::FromUtf8(path)](std::int32_t number, int error = 0) {
    return Runtime::TextOf(
        number, shown, error == 0 ? Platform::String() : Platform::FromUtf8(Runtime::SystemReason(error)));
  };
  if (path.empty()) return reason(TextNumber::kPathEmpty);
  if (!path.starts_with('/')) return reason(TextNumber::kPathNotWhole);
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) {
    const int error = errno;
    if (error == ENOENT || error == ENOTDIR) return reason(TextNumber::kFileMissing);
    return reason(TextNumber::kFileUnreadable, error);
  }
  if (S_ISDIR(status.st_mode)) return reason(TextNumber::kFileIsFolder);
  if (!S_ISREG(status.st_mode)) return reason(TextNumber::kFileNotOrdinary);
  if (static_cast<std::uint64_t>(status.st_size) > Runtime::ProjectText::kLargestFile)
    return reason(TextNumber::kFileTooLarge);
  if (access(path.c_str(), R_OK) != 0) return reason(TextNumber::kFileUnreadable, errno);
  return {};
}

}  // namespace TvGeneralServices
