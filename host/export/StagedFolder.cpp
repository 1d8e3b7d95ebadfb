#include "host/export/StagedFolder.h"

#include <fcntl.h>
#include <stdlib.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>

#include "platform/Failure.h"
#include "platform/ReasonTexts.h"
#include "runtime/DurableFile.h"
#include "runtime/SystemReason.h"
#include "runtime/Texts.h"

namespace Host {
namespace {

namespace fs = std::filesystem;
using namespace Platform;

// Raises a failure for errno.
[[noreturn]] void Refuse(const std::string& path) {
  const int error = errno;
  const bool denied = error == EACCES || error == EPERM || error == EROFS;
  throw Failure(
      denied ? FailureNumber::PermissionDenied : FailureNumber::DeviceFailed, u"tvmail",
      Runtime::TextOf(TextNumber::kNotCreated, FromUtf8(path), FromUtf8(Runtime::SystemReason(error))));
}

}  // namespace

StagedFolder::StagedFolder(std::string name)
    : name_(std::move(name)), path_((fs::path(name_).parent_path() / ".talvane-XXXXXX").string()) {
  if (!mkdtemp(path_.data())) Refuse(name_);
}

StagedFolder::~StagedFolder() {
  std::error_code ignored;
  if (!path_.empty()) fs::remove_all(path_, ignored);
}

void StagedFolder::Publish() {
  Runtime::SyncFolder(path_);
  const bool replaces = fs::is_directory(fs::symlink_status(name_));
  // Exchanged, the staged name is that of the former folder, which the destructor removes.
  if (renameat2(AT_FDCWD, path_.c_str(), AT_FDCWD, name_.c_str(),
                replaces ? RENAME_EXCHANGE : RENAME_NOREPLACE) != 0)
    Refuse(name_);
  if (!replaces) path_.clear();
  Runtime::SyncFolder(fs::path(name_).parent_path().string());
}

}  // namespace Host
