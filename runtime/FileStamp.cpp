#include "runtime/FileStamp.h"

#include <sys/stat.h>

namespace Runtime {
namespace {

bool Same(const std::timespec& left, const std::timespec& right) {
  return left.tv_sec == right.tv_sec && left.tv_nsec == right.tv_nsec;
}

bool IsBefore(const std::timespec& left, const std::timespec& right) {
  return left.tv_sec < right.tv_sec || (left.tv_sec == right.tv_sec && left.tv_nsec < right.tv_nsec);
}

}  // namespace

FileStamp::FileStamp(const std::string& path) {
  // The clock by which the kernel dates files.
  std::timespec now{};
  clock_gettime(CLOCK_REALTIME_COARSE, &now);
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) return;
  device_ = status.st_dev;
  number_ = status.st_ino;
  size_ = status.st_size;
  written_ = status.st_mtim;
  changed_ = status.st_ctim;
  settled_ = IsBefore(changed_, now);
}

bool operator==(const FileStamp& left, const FileStamp& right) {
  return left.device_ == right.device_ && left.number_ == right.number_ && left.size_ == right.size_ &&
         Same(left.written_, right.written_) && Same(left.changed_, right.changed_);
}

}  // namespace Runtime
