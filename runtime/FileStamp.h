// FileStamp: tells with one system call whether a file is still the one that was read, with the same content.
#pragma once

#include <sys/types.h>

#include <ctime>
#include <string>

namespace Runtime {

// Take a stamp, then read the file. What was read is valid as long as a later stamp equals it and it was
// settled.
class FileStamp {
 public:
  // Of no file.
  FileStamp() = default;

  // Of the file that the path names now; of no file if there is none.
  explicit FileStamp(const std::string& path);

  // False if the file was changed in the same tick of the kernel's clock in which the stamp was taken: it may
  // be changed again in this tick, and keep its times.
  bool IsSettled() const { return settled_; }

  // True for the same file with the same size and times, which no program can set all back.
  friend bool operator==(const FileStamp& left, const FileStamp& right);

 private:
  dev_t device_ = 0;
  ino_t number_ = 0;
  off_t size_ = 0;
  std::timespec written_{}, changed_{};
  bool settled_ = false;
};

}  // namespace Runtime
