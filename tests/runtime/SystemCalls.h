// SystemCalls: the calls that write files and bring them to the disk, watched and made to fail.
//
// The program's own functions stand in front of the system's for every library of the process, SQLite
// included. Calls on files outside the folder, and on the memory that processes share beside a database, are
// neither counted nor failed.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <map>
#include <set>
#include <string>

namespace Tests {

class SystemCalls {
 public:
  // One at a time, as long as it lives, on one thread.
  explicit SystemCalls(const std::filesystem::path& folder);
  ~SystemCalls();
  SystemCalls(const SystemCalls&) = delete;
  SystemCalls& operator=(const SystemCalls&) = delete;

  // The call of that number, counted from 1, fails with the error and does nothing, but a file is closed. On
  // a disk that is full (ENOSPC) all that follow fail too.
  void Fail(int number, int error) { failing_ = number, error_ = error; }
  void FailSyncsOfFolders(int error) { folderError_ = error; }
  void FailRenamesThatReplaceNothing(int error) { renameError_ = error; }

  int Count() const { return count_; }
  bool HasFailed() const { return failing_ != 0 && count_ >= failing_; }
  const std::string& FailedPath() const { return failedPath_; }  // of the file or folder

  // The files that were written, and the folders in which names were given, since they were brought to the
  // disk last; and files that were renamed before they were.
  std::string NotOnDisk() const;

  // For the functions: true if the call must fail, with errno set.
  bool OnCall(int descriptor, bool isSync);
  bool OnRename(const char* from, const char* to, bool mayReplace);
  void OnWritten(int descriptor);
  void OnSynced(int descriptor);

  static SystemCalls* Watching();

 private:
  using Identity = std::pair<dev_t, ino_t>;
  bool IsWatched(const std::string& path) const;
  bool MustFail(const std::string& path);

  std::string folder_;
  int count_ = 0, failing_ = 0, error_ = 0, folderError_ = 0, renameError_ = 0;
  std::map<Identity, std::string> dirty_;
  std::string tooEarly_, failedPath_;
};

}  // namespace Tests
