// DurableFile: small files that are read, created and replaced as a whole.
//
// A reader finds the old content or the new one, also after a crash: new content is written to a temporary
// file in the same folder, synced, and renamed to the file's name; then the folder is synced. An error of a
// file system that can't sync folders is ignored.
//
// Paths are UTF-8. Every failure's description begins with the path: 76 for a file or folder that doesn't
// exist, 58 for a file that exists already, 70 for a missing permission, 380 for a folder or a device in the
// place of a file and for a file that is too large, 57 for other reasons. Any thread.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <string>
#include <string_view>

#include "runtime/BusyTimeout.h"

namespace Runtime {

// Owns a file descriptor, and closes it.
class Descriptor {
 public:
  explicit Descriptor(int number = -1) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept;
  Descriptor& operator=(Descriptor&& other) noexcept;
  ~Descriptor();

  int Number() const { return number_; }
  explicit operator bool() const { return number_ >= 0; }

  // False, with errno, if the system reports a write error.
  bool Close();

 private:
  int number_;
};

struct SmallFile {
  std::string Content;
  mode_t Mode = 0;  // when it was read
};

// The content of a file. Refuses a folder, a device, and a file of more than `largest` bytes.
SmallFile ReadSmallFile(const std::string& path, std::size_t largest);

// Creates a file of mode 0600. 58 if it exists. After a failure there is no new file.
void CreateSmallFile(const std::string& path, std::string_view content);

// An existing file with an exclusive advisory lock (flock), which is released with the object.
class LockedFile {
 public:
  // Follows symbolic links. Raises 57 if the lock is not obtained within the timeout. On a file system
  // without locks the file is used unlocked.
  LockedFile(const std::string& path, std::size_t largest, std::chrono::milliseconds timeout = BusyTimeout());

  // The path with symbolic links resolved.
  const std::string& Path() const { return path_; }

  SmallFile Read() const;

  // Replaces the content; it is on disk when this returns. Owner and mode are kept. After a failure the file
  // has its old content, unless the description says that the new one was saved. To be called once.
  void Replace(std::string_view content) const;

 private:
  std::string path_;
  std::size_t largest_;
  Descriptor file_;
};

// An exclusive advisory lock (flock) on a folder, which is released with the object.
class FolderLock {
 public:
  // Raises 57 if the lock is not obtained within the timeout.
  explicit FolderLock(const std::string& folder, std::chrono::milliseconds timeout = BusyTimeout());

 private:
  Descriptor folder_;
};

// A new file: it has a temporary name until it is published, and is removed with the object unless Keep was
// called.
class StagedFile {
 public:
  // An empty file of mode 0600 in the folder, with a unique name.
  explicit StagedFile(const std::string& folder);

  // An empty file of that name, with the owner and mode of another file. A file that has the name is removed
  // first: the caller must hold a lock that keeps other programs from using it.
  StagedFile(const std::string& path, const Descriptor& modelOfOwnerAndMode);

  StagedFile(const StagedFile&) = delete;
  StagedFile& operator=(const StagedFile&) = delete;
  ~StagedFile();

  // The present path.
  const std::string& Path() const { return path_; }

  void Write(std::string_view content);

  // Closes the file, so that SQLite, for example, can open and fill it.
  void Release();

  // Syncs the file and renames it. Publish raises 58 if the name exists; PublishOver replaces that file.
  void Publish(const std::string& name);
  void PublishOver(const std::string& name);

  // The file is not removed with the object.
  void Keep() { kept_ = true; }

 private:
  void Sync();

  std::string path_;
  Descriptor file_;
  bool kept_ = false;
};

// Syncs a folder, so that files created, renamed or removed in it are so after a crash.
void SyncFolder(const std::string& folder);

}  // namespace Runtime
