#include "runtime/StoreFolder.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/Failure.h"
#include "platform/ReasonTexts.h"
#include "runtime/DurableFile.h"
#include "runtime/Folders.h"
#include "runtime/SystemReason.h"
#include "runtime/Texts.h"

namespace Runtime {
namespace {

namespace TextNumber = Platform::TextNumber;

[[noreturn]] void Refuse(const std::string& path, std::int32_t text, StringView argument = {}) {
  throw Platform::Failure(Platform::FailureNumber::DeviceFailed, u"Runtime.RegistryStore",
                          TextOf(text, Platform::FromUtf8(path), argument));
}

// False if the folder's parent is missing.
bool Make(const std::string& folder, mode_t mode) {
  if (mkdir(folder.c_str(), mode) == 0) {
    SyncFolder(FolderOfPath(folder));
    return true;
  }
  if (errno != EEXIST && errno != ENOENT)
    Refuse(folder, TextNumber::kNotCreated, Platform::FromUtf8(SystemReason(errno)));
  return errno == EEXIST;
}

void MakeWithParents(const std::string& folder, mode_t mode) {
  if (Make(folder, mode)) return;
  MakeWithParents(FolderOfPath(folder), 0755);
  if (!Make(folder, mode)) Refuse(folder, TextNumber::kNotCreated, Platform::FromUtf8(SystemReason(ENOENT)));
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
  if ((status.st_mode & (S_IWGRP | S_IWOTH)) != 0) Refuse(path, TextNumber::kRegistryOpenToOthers);
  if (status.st_uid != geteuid() && status.st_uid != 0)
    Refuse(path, TextNumber::kRegistryOfAnotherUser, Platform::FromUtf8(NameOfUser(status.st_uid)));
}

void RequireTrusted(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0)
    Refuse(path, TextNumber::kNotReached, Platform::FromUtf8(SystemReason(errno)));
  RequireTrusted(path, status);
}

}  // namespace Runtime
