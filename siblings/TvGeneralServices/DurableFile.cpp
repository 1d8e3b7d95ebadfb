#include "siblings/TvGeneralServices/DurableFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <thread>
#include <utility>

#include "platform/Failure.h"

namespace TvGeneralServices {
namespace {

using namespace Platform;

constexpr off_t kLargest = 1 << 20;  // bytes; no project file comes near it
constexpr auto kLongestWait = std::chrono::seconds(10);

[[noreturn]] void Refuse(const std::string& path, const std::string& why,
                         std::int32_t number = FailureNumber::DeviceFailed) {
  throw Failure(number, u"TvGeneralServices.Files", FromUtf8(path + " " + why));
}

// An open file, closed at the end.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(other.number_) { other.number_ = -1; }
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }
  int Number() const { return number_; }

 private:
  int number_;
};

void RequireRegularFile(const std::string& path) {
  if (path.empty()) Refuse("The path of the project file", "is empty", FailureNumber::InvalidArgument);
  if (path.find('\0') != std::string::npos)
    Refuse(path.substr(0, path.find('\0')), "is followed by a NUL, which no path can hold",
           FailureNumber::InvalidArgument);
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) {
    if (errno == ENOENT || errno == ENOTDIR) Refuse(path, "doesn't exist", FailureNumber::PathNotFound);
    Refuse(path, std::string("can't be reached: ") + std::strerror(errno));
  }
  if (S_ISDIR(status.st_mode)) Refuse(path, "is a folder; name the project file in it");
  if (!S_ISREG(status.st_mode)) Refuse(path, "is no ordinary file");
  if (status.st_size > kLargest) Refuse(path, "is too large to be a project file");
}

Descriptor Open(const std::string& path, int flags) {
  RequireRegularFile(path);
  Descriptor file(open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK));
  if (file.Number() < 0) {
    const char* task = flags == O_RDONLY ? "can't be read: " : "can't be written: ";
    Refuse(path, task + std::string(std::strerror(errno)));
  }
  return file;
}

std::string ReadAll(const Descriptor& file, const std::string& path) {
  std::string content;
  char block[16384];
  for (;;) {
    const ssize_t count = read(file.Number(), block, sizeof block);
    if (count == 0) return content;
    if (count > 0) content.append(block, static_cast<std::size_t>(count));
    if (count < 0 && errno != EINTR) Refuse(path, std::string("can't be read: ") + std::strerror(errno));
    if (content.size() > static_cast<std::size_t>(kLargest))
      Refuse(path, "is too large to be a project file");
  }
}

bool WriteAll(int descriptor, std::string_view content) {
  while (!content.empty()) {
    const ssize_t count = write(descriptor, content.data(), content.size());
    if (count < 0 && errno != EINTR) return false;
    if (count > 0) content.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

void Lock(const Descriptor& file, const std::string& path) {
  const auto end = std::chrono::steady_clock::now() + kLongestWait;
  while (flock(file.Number(), LOCK_EX | LOCK_NB) != 0) {
    if (errno != EWOULDBLOCK && errno != EINTR) return;  // a file system without locks
    if (std::chrono::steady_clock::now() > end) Refuse(path, "is being saved by another program; try again");
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
}

// The locked file. Who waited may have got the lock of a file that was replaced meanwhile, and opens again.
Descriptor OpenLocked(const std::string& path) {
  for (;;) {
    Descriptor file = Open(path, O_RDWR);
    Lock(file, path);
    struct stat locked {
    }, present{};
    if (fstat(file.Number(), &locked) == 0 && stat(path.c_str(), &present) == 0 &&
        locked.st_ino == present.st_ino && locked.st_dev == present.st_dev)
      return file;
  }
}

// The new content beside the old, removed again unless it was renamed over it. The lock on the old one makes
// the name ours; what a killed predecessor left under it goes.
class NewFile {
 public:
  NewFile(const std::string& path, const Descriptor& old)
      : path_(path), folder_(std::filesystem::path(path).parent_path().string()) {
    name_ = folder_ + "/." + std::filesystem::path(path).filename().string() + ".new";
    unlink(name_.c_str());
    descriptor_ = open(name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (descriptor_ < 0) Fail();
    struct stat status {};
    if (fstat(old.Number(), &status) != 0) Fail();
    // A file of another owner keeps at least its group where the system doesn't let its owner be kept.
    if (fchown(descriptor_, status.st_uid, status.st_gid) != 0 &&
        fchown(descriptor_, static_cast<uid_t>(-1), status.st_gid) != 0)
      status.st_mode &= ~static_cast<mode_t>(S_IRWXG | S_ISGID);
    if (fchmod(descriptor_, status.st_mode & 07777) != 0) Fail();
  }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  ~NewFile() { Drop(); }

  void Replace(const std::string& content) {
    if (!WriteAll(descriptor_, content) || fsync(descriptor_) != 0) Fail();
    if (rename(name_.c_str(), path_.c_str()) != 0) Fail();
    close(std::exchange(descriptor_, -1));
    const Descriptor folder(open(folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.Number() < 0 || (fsync(folder.Number()) != 0 && errno != EINVAL))
      Refuse(path_,
             std::string("was saved, but may be the old one after a power cut: ") + std::strerror(errno));
  }

 private:
  void Drop() {
    if (descriptor_ < 0) return;
    close(std::exchange(descriptor_, -1));
    unlink(name_.c_str());
  }

  [[noreturn]] void Fail() {
    const std::string reason = std::strerror(errno);
    Drop();
    Refuse(path_, "can't be saved: " + reason + "; the file is as it was");
  }

  std::string path_;
  std::string folder_;
  std::string name_;
  int descriptor_ = -1;
};

}  // namespace

std::string ReadWhole(const std::string& path) {
  return ReadAll(Open(path, O_RDONLY), path);
}

void ReplaceWhole(const std::string& path, const std::function<std::string(const std::string&)>& change) {
  RequireRegularFile(path);
  const std::string target = std::filesystem::canonical(path).string();
  const Descriptor old = OpenLocked(target);
  const std::string content = ReadAll(old, target);
  const std::string changed = change(content);
  if (changed.size() > static_cast<std::size_t>(kLargest))
    Refuse(path, "can't be saved: it would be too large; the file is as it was");
  if (changed != content) NewFile(target, old).Replace(changed);
}

}  // namespace TvGeneralServices
