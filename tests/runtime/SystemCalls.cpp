#include "tests/runtime/SystemCalls.h"

#include <stdio.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>

namespace Tests {
namespace {

SystemCalls* watching = nullptr;

std::string PathOf(int descriptor) {
  char path[4096];
  const ssize_t length = readlink(("/proc/self/fd/" + std::to_string(descriptor)).c_str(), path, sizeof path);
  return std::string(path, length < 0 ? 0 : static_cast<std::size_t>(length));
}

}  // namespace

SystemCalls::SystemCalls(const std::filesystem::path& folder) : folder_(folder.string()) {
  watching = this;
}

SystemCalls::~SystemCalls() {
  watching = nullptr;
}

SystemCalls* SystemCalls::Watching() {
  return watching;
}

bool SystemCalls::IsWatched(const std::string& path) const {
  return path.starts_with(folder_) && !path.ends_with("-shm");
}

bool SystemCalls::MustFail(const std::string& path) {
  ++count_;
  if (failing_ == 0 || count_ < failing_ || (count_ > failing_ && error_ != ENOSPC)) return false;
  if (count_ == failing_) failedPath_ = path;
  errno = error_;
  return true;
}

bool SystemCalls::OnCall(int descriptor, bool isSync) {
  struct stat status {};
  const std::string path = PathOf(descriptor);
  if (!IsWatched(path) || fstat(descriptor, &status) != 0) return false;
  if (isSync && S_ISDIR(status.st_mode) && folderError_ != 0) {
    errno = folderError_;
    return true;
  }
  return MustFail(path);
}

bool SystemCalls::OnRename(const char* from, const char* to, bool mayReplace) {
  struct stat file {
  }, folder{};
  if (!IsWatched(to)) return false;
  if (!mayReplace && renameError_ != 0) {
    errno = renameError_;
    return true;
  }
  if (MustFail(to)) return true;
  const std::string parent = std::filesystem::path(to).parent_path();
  if (stat(from, &file) == 0 && dirty_.contains({file.st_dev, file.st_ino}))
    tooEarly_ += std::string(to) + " ";
  if (stat(parent.c_str(), &folder) == 0) dirty_[{folder.st_dev, folder.st_ino}] = parent;
  return false;
}

bool SystemCalls::OnOwnerChange() {
  if (ownerFailures_ == 0) return false;
  --ownerFailures_;
  errno = EPERM;
  return true;
}

void SystemCalls::OnWritten(int descriptor) {
  struct stat status {};
  const std::string path = PathOf(descriptor);
  if (IsWatched(path) && fstat(descriptor, &status) == 0) dirty_[{status.st_dev, status.st_ino}] = path;
}

void SystemCalls::OnSynced(int descriptor) {
  struct stat status {};
  if (fstat(descriptor, &status) == 0) dirty_.erase({status.st_dev, status.st_ino});
}

std::string SystemCalls::NotOnDisk() const {
  std::string paths = tooEarly_;
  for (const auto& [identity, path] : dirty_) {
    if (std::filesystem::exists(path)) paths += path + " ";
  }
  return paths;
}

namespace {

template <class... Arguments>
long Written(long number, int descriptor, Arguments... arguments) {
  SystemCalls* calls = SystemCalls::Watching();
  if (calls && calls->OnCall(descriptor, false)) return -1;
  if (calls) calls->OnWritten(descriptor);
  return syscall(number, descriptor, arguments...);
}

int Synced(long number, int descriptor) {
  SystemCalls* calls = SystemCalls::Watching();
  if (calls && calls->OnCall(descriptor, true)) return -1;
  const long result = syscall(number, descriptor);
  if (calls && result == 0) calls->OnSynced(descriptor);
  return static_cast<int>(result);
}

template <class... Arguments>
int Renamed(long number, const char* from, const char* to, bool mayReplace, Arguments... arguments) {
  SystemCalls* calls = SystemCalls::Watching();
  if (calls && calls->OnRename(from, to, mayReplace)) return -1;
  return static_cast<int>(syscall(number, arguments...));
}

}  // namespace
}  // namespace Tests

extern "C" {

ssize_t write(int descriptor, const void* bytes, size_t size) {
  return Tests::Written(SYS_write, descriptor, bytes, size);
}
ssize_t pwrite64(int descriptor, const void* bytes, size_t size, off64_t offset) {
  return Tests::Written(SYS_pwrite64, descriptor, bytes, size, offset);
}
int fsync(int descriptor) {
  return Tests::Synced(SYS_fsync, descriptor);
}
int fdatasync(int descriptor) {
  return Tests::Synced(SYS_fdatasync, descriptor);
}
int close(int descriptor) {
  Tests::SystemCalls* calls = Tests::SystemCalls::Watching();
  const bool fails = calls && calls->OnCall(descriptor, false);
  const int error = errno;
  const long result = syscall(SYS_close, descriptor);
  if (fails) errno = error;
  return fails ? -1 : static_cast<int>(result);
}
int fchown(int descriptor, uid_t owner, gid_t group) noexcept {
  Tests::SystemCalls* calls = Tests::SystemCalls::Watching();
  if (calls && calls->OnOwnerChange()) return -1;
  return static_cast<int>(syscall(SYS_fchown, descriptor, owner, group));
}
int rename(const char* from, const char* to) noexcept {
  return Tests::Renamed(SYS_rename, from, to, true, from, to);
}
int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) noexcept {
  return Tests::Renamed(SYS_renameat2, from, to, (flags & RENAME_NOREPLACE) == 0, fromFolder, from, toFolder,
                        to, flags);
}

}  // extern "C"
