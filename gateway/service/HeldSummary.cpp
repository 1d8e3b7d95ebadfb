#include "gateway/service/HeldSummary.h"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>

#include "gateway/delivery/HeldFolder.h"
#include "gateway/service/MailboxFile.h"

namespace Gateway {

HeldSummary ReadHeldSummary(Platform::StringView mailbox) {
  HeldSummary held;
  for (const char* part : {"/new", "/cur"}) {
    const std::string folder = HeldFolder(mailbox) + part;
    std::error_code error;
    std::filesystem::directory_iterator entry(folder, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
      struct stat status {};
      const std::string name = entry->path().filename().string();
      if (name.starts_with('.') || stat(entry->path().c_str(), &status) != 0) continue;
      const std::chrono::sys_seconds time{std::chrono::seconds(status.st_mtim.tv_sec)};
      held.Oldest = held.Count == 0 ? time : std::min(*held.Oldest, time);
      ++held.Count;
    }
    if (error && error != std::errc::no_such_file_or_directory) RaiseFolderDenied(folder, error.value());
  }
  return held;
}

}  // namespace Gateway
