#include "runtime/StoreFolder.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/Failure.h"
#include "runtime/DurableFile.h"
#include "runtime/Folders.h"
#include "runtime/SystemReason.h"

namespace Runtime {
namespace {

[[noreturn]] void Refuse(const std::string& path, const std::string& why) {
  throw Platform::Failure(Platform::FailureNumber::DeviceFailed, u"Runtime.RegistryStore",
                          Platform::FromUtf8(path + " " + why));
}

// False if the folder's parent is missing.
bool Make(const std::string& folder, mode_t mode) {
  if (mkdir(folder.c_str(), mode) == 0) {
    SyncFolder(FolderOfPath(folder));
    return true;
  }
  if (errno != EEXIST && errno != ENOENT) Refuse(folder, "can't be created: " + SystemReason(errno));
  return errno == EEXIST;
}

void MakeWithParents(const std::string& folder, mode_t mode) {
  if (Make(folder, mode)) return;
  MakeWithParents(FolderOfPath(folder), 0755);
  if (!Make(folder, mode)) Refuse(folder, "can't be created: " + SystemReason(ENOENT));
}

std::string NameOfUser(uid_t user) {
  const passwd* entry = getpwuid(user);
  return entry ? entry->pw_name : "#" + std::to_string(user);
}

}  // namespace

void MakeStoreFolder(const std::string& folder) {
  MakeWithParents(folder, 0700);
}

void RequireTrusted(const std::string& path, const struct stat& status) {
  if ((status.st_mode & (S_IWGRP | S_IWOTH)) != 0)
    Refuse(path,
           "may be written by others than its owner, and the registry decides which code is run: remove "
           "that right with \"chmod go-w " +
               path + "\"");
  if (status.st_uid != geteuid() && status.st_uid != 0) {
    const std::string owner = NameOfUser(status.st_uid);
    Refuse(path, "belongs to the user " + owner +
                     ", and the registry decides which code is run: run the program as that user (sudo -u " +
                     owner + "), or set TALVANE_HOME to a folder of your own");
  }
}

void RequireTrusted(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) Refuse(path, "can't be reached: " + SystemReason(errno));
  RequireTrusted(path, status);
}

}  // namespace Runtime
