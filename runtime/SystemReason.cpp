#include "runtime/SystemReason.h"

#include <sys/resource.h>

#include <cerrno>
#include <system_error>

#include "platform/ReasonTexts.h"
#include "runtime/Texts.h"

namespace Runtime {
namespace {

namespace TextNumber = Platform::TextNumber;

// The errors that users meet. For any other one the system's English text is good enough to be searched for.
constexpr struct {
  int Error;
  std::int32_t Text;
} kTexts[] = {
    {ENOSPC, TextNumber::kNoSpaceLeft},
    {EACCES, TextNumber::kPermissionMissing},
    {EPERM, TextNumber::kPermissionMissing},
    {EROFS, TextNumber::kReadOnlyDisk},
    {ENOENT, TextNumber::kNoSuchFile},
    {ENOTDIR, TextNumber::kNotAFolder},
    {EISDIR, TextNumber::kIsAFolder},
    {EIO, TextNumber::kDiskFault},
    {EFBIG, TextNumber::kOverFileSize},
    {EDQUOT, TextNumber::kOverQuota},
    {EBUSY, TextNumber::kInUse},
    {ETXTBSY, TextNumber::kInUse},
    {EAGAIN, TextNumber::kInUse},
    {EMFILE, TextNumber::kTooManyFilesOpen},
    {ENFILE, TextNumber::kTooManyFilesOpen},
    {ENAMETOOLONG, TextNumber::kNameTooLong},
    {ENOMEM, TextNumber::kNotEnoughMemory},
};

}  // namespace

std::string SystemReason(int error) {
  rlimit limit{};
  if (error == EFBIG && getrlimit(RLIMIT_FSIZE, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY)
    return Platform::ToUtf8(
        TextOf(TextNumber::kOverFileSizeLimit, Platform::FromUtf8(std::to_string(limit.rlim_cur))));
  for (const auto& [known, text] : kTexts) {
    if (known == error) return Platform::ToUtf8(TextOf(text));
  }
  return std::generic_category().message(error);
}

}  // namespace Runtime
