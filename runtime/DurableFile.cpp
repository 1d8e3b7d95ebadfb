#include "runtime/DurableFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <thread>
#include <utility>

#include "platform/Failure.h"
#include "platform/ProgramTexts.h"
#include "platform/ReasonTexts.h"
#include "runtime/Folders.h"
#include "runtime/SystemReason.h"
#include "runtime/Texts.h"

namespace Runtime {
namespace {

using Platform::FailureNumber::AlreadyExists;
using Platform::FailureNumber::DeviceFailed;
using Platform::FailureNumber::PathNotFound;
using Platform::FailureNumber::PermissionDenied;
using Platform::FailureNumber::RefusedInput;

namespace TextNumber = Platform::TextNumber;

// Raises a failure with a text, whose first argument is the path.
[[noreturn]] void Refuse(const std::string& path, std::int32_t text, StringView argument = {},
                         std::int32_t number = DeviceFailed) {
  throw Platform::Failure(number, u"Runtime.DurableFile", TextOf(text, Platform::FromUtf8(path), argument));
}

String Decimal(std::size_t number) {
  return Platform::FromUtf8(std::to_string(number));
}

bool IsMissing(int error) {
  return error == ENOENT || error == ENOTDIR;
}

// Raises a failure for errno. The text says what could not be done.
[[noreturn]] void RefuseForSystem(const std::string& path, std::int32_t text) {
  const int error = errno;
  if (IsMissing(error)) Refuse(path, TextNumber::kPathMissing, {}, PathNotFound);
  const bool denied = error == EACCES || error == EPERM || error == EROFS;
  if (error == EEXIST) Refuse(path, TextNumber::kPathTaken, {}, AlreadyExists);
  Refuse(path, text, Platform::FromUtf8(SystemReason(error)), denied ? PermissionDenied : DeviceFailed);
}

void RequireSmallFile(const std::string& path, const struct stat& status, std::size_t largest) {
  if (S_ISDIR(status.st_mode)) Refuse(path, TextNumber::kFolderNotFile, {}, RefusedInput);
  if (!S_ISREG(status.st_mode)) Refuse(path, TextNumber::kNoOrdinaryFile, {}, RefusedInput);
  if (status.st_size < 0 || static_cast<std::uint64_t>(status.st_size) > largest)
    Refuse(path, TextNumber::kMoreBytesThanAllowed, Decimal(largest), RefusedInput);
}

// Checks the file before opening it, since opening a device can have effects.
Descriptor OpenSmallFile(const std::string& path, int flags, std::size_t largest) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) RefuseForSystem(path, TextNumber::kNotReached);
  RequireSmallFile(path, status, largest);
  Descriptor file(open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK));
  if (!file) RefuseForSystem(path, flags == O_RDONLY ? TextNumber::kFileUnreadable : TextNumber::kNotWritten);
  return file;
}

SmallFile ReadOpenFile(const Descriptor& file, const std::string& path, std::size_t largest) {
  struct stat status {};
  if (fstat(file.Number(), &status) != 0) RefuseForSystem(path, TextNumber::kFileUnreadable);
  RequireSmallFile(path, status, largest);
  SmallFile read{{}, status.st_mode};
  char block[16384];
  for (;;) {
    const ssize_t count = ::read(file.Number(), block, sizeof block);
    if (count == 0) return read;
    if (count > 0) read.Content.append(block, static_cast<std::size_t>(count));
    if (count < 0 && errno != EINTR) RefuseForSystem(path, TextNumber::kFileUnreadable);
    if (read.Content.size() > largest) Refuse(path, TextNumber::kMoreBytesThanAllowed, Decimal(largest));
  }
}

bool SyncDescriptor(int descriptor) {
  while (fsync(descriptor) != 0) {
    if (errno != EINTR) return false;
  }
  return true;
}

void WaitForLock(const Descriptor& file, const std::string& path, std::chrono::milliseconds timeout) {
  const auto end = std::chrono::steady_clock::now() + timeout;
  while (flock(file.Number(), LOCK_EX | LOCK_NB) != 0) {
    if (errno != EWOULDBLOCK && errno != EINTR) return;  // the file system has no locks
    if (std::chrono::steady_clock::now() >= end)
      Refuse(path, TextNumber::kNotReleased,
             Decimal(static_cast<std::size_t>(
                 std::chrono::duration_cast<std::chrono::seconds>(timeout).count())));
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
}

// Opens the file again if it was replaced while this waited for the lock.
Descriptor OpenLocked(const std::string& path, std::size_t largest, std::chrono::milliseconds timeout) {
  for (;;) {
    Descriptor file = OpenSmallFile(path, O_RDWR, largest);
    WaitForLock(file, path, timeout);
    struct stat locked {
    }, present{};
    if (fstat(file.Number(), &locked) == 0 && stat(path.c_str(), &present) == 0 &&
        locked.st_ino == present.st_ino && locked.st_dev == present.st_dev)
      return file;
  }
}

std::string WithoutLinks(const std::string& path) {
  std::error_code error;
  const auto target = std::filesystem::canonical(path, error);
  return error ? path : target.string();
}

}  // namespace

Descriptor::Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
  std::swap(number_, other.number_);
  return *this;
}

Descriptor::~Descriptor() {
  Close();
}

bool Descriptor::Close() {
  return number_ < 0 || close(std::exchange(number_, -1)) == 0;
}

SmallFile ReadSmallFile(const std::string& path, std::size_t largest) {
  return ReadOpenFile(OpenSmallFile(path, O_RDONLY, largest), path, largest);
}

void CreateSmallFile(const std::string& path, std::string_view content) {
  StagedFile file(FolderOfPath(path));
  file.Write(content);
  file.Publish(path);
  SyncFolder(FolderOfPath(path));
  file.Keep();
}

LockedFile::LockedFile(const std::string& path, std::size_t largest, std::chrono::milliseconds timeout)
    : path_(WithoutLinks(path)), largest_(largest), file_(OpenLocked(path_, largest, timeout)) {}

SmallFile LockedFile::Read() const {
  if (lseek(file_.Number(), 0, SEEK_SET) != 0) RefuseForSystem(path_, TextNumber::kFileUnreadable);
  return ReadOpenFile(file_, path_, largest_);
}

void LockedFile::Replace(std::string_view content) const {
  const std::string folder = FolderOfPath(path_);
  const std::string name = path_.substr(path_.rfind('/') + 1);
  try {
    if (content.size() > largest_) Refuse(path_, TextNumber::kWouldBeTooLarge, Decimal(largest_));
    // The lock keeps other programs from using this name. A file left by a killed program is removed.
    StagedFile file(folder + "/." + name + ".new", file_);
    file.Write(content);
    file.PublishOver(path_);
    file.Keep();
  } catch (const Platform::Failure& failure) {
    Refuse(path_, TextNumber::kNotSaved, failure.Description(), failure.Number());
  }
  try {
    SyncFolder(folder);
  } catch (const Platform::Failure& failure) {
    Refuse(path_, TextNumber::kSavedUnsafely, failure.Description());
  }
}

FolderLock::FolderLock(const std::string& folder, std::chrono::milliseconds timeout)
    : folder_(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
  if (!folder_) RefuseForSystem(folder, TextNumber::kNotOpened);
  WaitForLock(folder_, folder, timeout);
}

StagedFile::StagedFile(const std::string& folder) : path_(folder + "/.talvane-XXXXXX") {
  file_ = Descriptor(mkostemp(path_.data(), O_CLOEXEC));
  if (!file_) {
    kept_ = true;
    RefuseForSystem(folder, TextNumber::kFolderTakesNoFile);
  }
}

StagedFile::StagedFile(const std::string& path, const Descriptor& modelOfOwnerAndMode) : path_(path) {
  unlink(path_.c_str());
  file_ = Descriptor(open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
  if (!file_) RefuseForSystem(path_, TextNumber::kNotCreated);
  struct stat status {};
  bool alike = fstat(modelOfOwnerAndMode.Number(), &status) == 0;
  // Without the right to change the owner, the group is kept. Without that, the group loses its rights.
  if (alike && fchown(file_.Number(), status.st_uid, status.st_gid) != 0 &&
      fchown(file_.Number(), static_cast<uid_t>(-1), status.st_gid) != 0)
    status.st_mode &= ~static_cast<mode_t>(S_IRWXG | S_ISGID);
  alike = alike && fchmod(file_.Number(), status.st_mode & 07777) == 0;
  if (alike) return;
  const int error = errno;
  unlink(path_.c_str());
  errno = error;
  RefuseForSystem(path_, TextNumber::kOwnerNotSet);
}

StagedFile::~StagedFile() {
  if (!kept_) unlink(path_.c_str());
}

void StagedFile::Write(std::string_view content) {
  while (!content.empty()) {
    const ssize_t count = write(file_.Number(), content.data(), content.size());
    if (count < 0 && errno != EINTR) RefuseForSystem(path_, TextNumber::kNotWritten);
    if (count > 0) content.remove_prefix(static_cast<std::size_t>(count));
  }
}

void StagedFile::Release() {
  if (!file_.Close()) RefuseForSystem(path_, TextNumber::kNotWritten);
}

void StagedFile::Sync() {
  if (!file_) file_ = Descriptor(open(path_.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW));
  if (!file_ || !SyncDescriptor(file_.Number())) RefuseForSystem(path_, TextNumber::kNotSynced);
  Release();
}

void StagedFile::Publish(const std::string& name) {
  Sync();
  if (renameat2(AT_FDCWD, path_.c_str(), AT_FDCWD, name.c_str(), RENAME_NOREPLACE) != 0) {
    // On a file system without RENAME_NOREPLACE, link the new name and remove the old one.
    if (errno != EINVAL || link(path_.c_str(), name.c_str()) != 0)
      RefuseForSystem(name, TextNumber::kNotCreated);
    unlink(path_.c_str());
  }
  path_ = name;
}

void StagedFile::PublishOver(const std::string& name) {
  Sync();
  if (rename(path_.c_str(), name.c_str()) != 0) RefuseForSystem(name, TextNumber::kNotReplaced);
  path_ = name;
}

void SyncFolder(const std::string& folder) {
  Descriptor opened(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!opened && (errno == EACCES || errno == EPERM)) return;  // the folder is writable but not readable
  if (opened && (SyncDescriptor(opened.Number()) || errno == EINVAL || errno == ENOTSUP || errno == ENOSYS))
    return;
  RefuseForSystem(folder, TextNumber::kNotSynced);
}

}  // namespace Runtime
