#include "gateway/service/MailboxLock.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "gateway/service/MailboxFile.h"
#include "platform/Failure.h"
#include "platform/ProgramTexts.h"
#include "runtime/Texts.h"

namespace Gateway {
namespace {

constexpr const char* kFolder = "locks";

// The process writes its number after it has locked the file, so it may be missing for a moment.
std::string ProcessIn(const Runtime::Descriptor& file) {
  char digits[32];
  const ssize_t count = pread(file.Number(), digits, sizeof digits, 0);
  std::string process(digits, count > 0 ? static_cast<std::size_t>(count) : 0);
  return process.substr(0, process.find_first_not_of("0123456789"));
}

// Of the whole file.
struct flock WriteLock() {
  struct flock lock {};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  return lock;
}

}  // namespace

MailboxLock::MailboxLock(Platform::StringView mailbox) {
  const std::string path = MakeMailboxFile(kFolder, mailbox);
  file_ = Runtime::Descriptor(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
  if (!file_) RaiseFolderDenied(path, errno);
  struct flock lock = WriteLock();
  if (fcntl(file_.Number(), F_OFD_SETLK, &lock) != 0) {
    if (errno != EAGAIN && errno != EACCES) RaiseFolderDenied(path, errno);
    throw Platform::Failure(
        Platform::FailureNumber::DeviceFailed, u"Gateway",
        Runtime::TextOf(Platform::TextNumber::kMailboxInUse, mailbox, Platform::FromUtf8(ProcessIn(file_))));
  }
  const std::string process = std::to_string(getpid()) + "\n";
  const bool written =
      ftruncate(file_.Number(), 0) == 0 && pwrite(file_.Number(), process.data(), process.size(), 0) > 0;
  static_cast<void>(written);  // only for messages
}

std::optional<std::string> MailboxLock::Holder(Platform::StringView mailbox) {
  const Runtime::Descriptor file(open(MailboxFile(kFolder, mailbox).c_str(), O_RDONLY | O_CLOEXEC));
  struct flock lock = WriteLock();
  if (!file || fcntl(file.Number(), F_OFD_GETLK, &lock) != 0 || lock.l_type == F_UNLCK) return std::nullopt;
  return ProcessIn(file);
}

}  // namespace Gateway
