// SystemCalls: records the system calls that write, rename and sync files, and makes them fail.
//
// The program defines these functions itself, which replaces those of the C library for all libraries of the
// process, including SQLite. Calls on files outside the folder, and on the shared memory of a database
// (-shm), are neither counted nor failed.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <map>
#include <set>
#include <string>

namespace Tests {

class SystemCalls {
 public:
  // Records until it is destroyed. One object at a time, on one thread.
  explicit SystemCalls(const std::filesystem::path& folder);
  ~SystemCalls();
  SystemCalls(const SystemCalls&) = delete;
  SystemCalls& operator=(const SystemCalls&) = delete;

  // The call of that number, counted from 1, fails with the error and has no effect, except that close closes
  // the file. With ENOSPC (disk full) all later calls fail too.
  void Fail(int number, int error) { failing_ = number, error_ = error; }
  void FailSyncsOfFolders(int error) { folderError_ = error; }
  void FailRenamesThatReplaceNothing(int error) { renameError_ = error; }

  void FailOwnerChanges(int count) { ownerFailures_ = count; }  // the next ones, with EPERM

  int Count() const { return count_; }
  bool HasFailed() const { return failing_ != 0 && count_ >= failing_; }
  const std::string& FailedPath() const { return failedPath_; }  // of the file or folder

  // The files that were written and the folders in which files were renamed since their last sync, and the
  // files that were renamed before they were synced.
  std::string NotOnDisk() const;

  // For the replaced functions: true, with errno set, if the call must fail.
  bool OnCall(int descriptor, bool isSync);
  bool OnRename(const char* from, const char* to, bool mayReplace);
  bool OnOwnerChange();
  void OnWritten(int descriptor);
  void OnSynced(int descriptor);

  static SystemCalls* Watching();

 private:
  using Identity = std::pair<dev_t, ino_t>;
  bool IsWatched(const std::string& path) const;
  bool MustFail(const std::string& path);

  std::string folder_;
  int count_ = 0, failing_ = 0, error_ = 0, folderError_ = 0, renameError_ = 0, ownerFailures_ = 0;
  std::map<Identity, std::string> dirty_;
  std::string tooEarly_, failedPath_;
};

}  // namespace Tests
