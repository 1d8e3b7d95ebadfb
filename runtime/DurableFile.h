// DurableFile: small files that are read whole, made whole and replaced whole.
//
// Whoever reads finds the old content or the new one, also after a crash: new content is written beside the
// file, brought to the disk, and renamed into its place; then the folder is brought to the disk. A folder on
// a file system that offers no such call is forgiven.
//
// Paths are in the bytes that the system takes. Every refusal is a raised failure that begins with the path:
// 76 for a file or folder that isn't there, 58 for a file that exists already, 70 where
// permission is missing, 57 for everything else. Any
// thread.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <string>
#include <string_view>

#include "runtime/Patience.h"

namespace Runtime {

// An open file, closed at the end.
class Descriptor {
 public:
  explicit Descriptor(int number = -1) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept;
  Descriptor& operator=(Descriptor&& other) noexcept;
  ~Descriptor();

  int Number() const { return number_; }
  explicit operator bool() const { return number_ >= 0; }

  // False, with errno, where the system tells only now that something couldn't be written.
  bool Close();

 private:
  int number_;
};

struct SmallFile {
  std::string Content;
  mode_t Mode = 0;  // with the rights that it had when it was read
};

// Refuses a folder, a device, and a file of more bytes than the largest.
SmallFile ReadSmallFile(const std::string& path, std::size_t largest);

// Makes a file of mode 0600, which nobody else may have made. After a failure there is none.
void CreateSmallFile(const std::string& path, std::string_view content);

// An existing file, kept from all others that lock it so, as long as the object lives.
class LockedFile {
 public:
  // Follows links. Raises 57 if another one still holds the lock when the patience is over. A file system
  // without locks is taken as it is.
  LockedFile(const std::string& path, std::size_t largest, std::chrono::milliseconds patience = Patience());

  // The path without links.
  const std::string& Path() const { return path_; }

  SmallFile Read() const;

  // Puts the content into the file's place, durable when it returns; owner and mode stay. After a failure the
  // old content is in place, unless the description says that the new one was saved. To be called once.
  void Replace(std::string_view content) const;

 private:
  std::string path_;
  std::size_t largest_;
  Descriptor file_;
};

// A folder, kept from all others that lock it so, as long as the object lives.
class FolderLock {
 public:
  // Raises 57 if another one still holds the lock when the patience is over.
  explicit FolderLock(const std::string& folder, std::chrono::milliseconds patience = Patience());

 private:
  Descriptor folder_;
};

// A file on its way into its place: under a name of its own at first, removed with the object unless it was
// kept.
class StagedFile {
 public:
  // A new empty file of mode 0600 in the folder, under a name that nobody has.
  explicit StagedFile(const std::string& folder);

  // Under the name given. Whoever calls it has made sure that no other one uses the name now.
  StagedFile(const std::string& path, const Descriptor& modelOfOwnerAndMode);

  StagedFile(const StagedFile&) = delete;
  StagedFile& operator=(const StagedFile&) = delete;
  ~StagedFile();

  // Where it lies now.
  const std::string& Path() const { return path_; }

  void Write(std::string_view content);

  // Closes the file, so that others may open and fill it.
  void Release();

  // Brings the content to the disk and gives it the name, which must be free, or the place of the file that
  // has the name.
  void Publish(const std::string& name);
  void PublishOver(const std::string& name);

  // From here on the file stays.
  void Keep() { kept_ = true; }

 private:
  void BringToDisk();

  std::string path_;
  Descriptor file_;
  bool kept_ = false;
};

// Brings to the disk what was made, renamed or removed in the folder.
void SyncFolder(const std::string& folder);

}  // namespace Runtime
