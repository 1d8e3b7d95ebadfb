#include "siblings/Talvane40/NoticeLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/Failure.h"
#include "platform/ReasonTexts.h"
#include "runtime/SystemReason.h"
#include "runtime/Texts.h"

namespace Talvane40 {
namespace {

using namespace Platform;

constexpr int kFlags = O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;

[[noreturn]] void Refuse(const std::string& path, int error) {
  throw Failure(
      FailureNumber::DeviceFailed, u"Talvane40",
      Runtime::TextOf(TextNumber::kNotOpened, FromUtf8(path), FromUtf8(Runtime::SystemReason(error))));
}

// Everybody who may use the database may use the lock, also after the superuser has created it. Without the
// permission for it the file stays as it was created.
void GiveOwnerAndModeOf(const std::string& database, const Runtime::Descriptor& file) {
  struct stat status {};
  if (stat(database.c_str(), &status) != 0) return;
  const uid_t owner = geteuid() == 0 ? status.st_uid : uid_t(-1);
  [[maybe_unused]] const int owned = fchown(file.Number(), owner, status.st_gid);
  [[maybe_unused]] const int allowed = fchmod(file.Number(), status.st_mode & 0666);
}

Runtime::Descriptor Open(const std::string& path, const std::string& database) {
  Runtime::Descriptor created(open(path.c_str(), kFlags | O_CREAT | O_EXCL, 0600));
  if (created) GiveOwnerAndModeOf(database, created);
  return created || errno != EEXIST ? std::move(created) : Runtime::Descriptor(open(path.c_str(), kFlags));
}

}  // namespace

Runtime::Descriptor TakeNoticeLock(const std::string& database) {
  const std::string path = database + "-notices";
  Runtime::Descriptor file = Open(path, database);
  struct stat status {};
  if (!file || fstat(file.Number(), &status) != 0) Refuse(path, errno);
  if (!S_ISREG(status.st_mode)) Refuse(path, EINVAL);
  while (flock(file.Number(), LOCK_EX | LOCK_NB) != 0) {
    if (errno == EWOULDBLOCK) return Runtime::Descriptor();
    if (errno != EINTR) Refuse(path, errno);
  }
  return file;
}

}  // namespace Talvane40
