#include "gateway/delivery/HeldFolder.h"

#include <algorithm>
#include <filesystem>

#include "gateway/delivery/MailboxFileName.h"
#include "platform/Failure.h"
#include "platform/ProgramTexts.h"
#include "runtime/DurableFile.h"
#include "runtime/Folders.h"
#include "runtime/StoreFolder.h"
#include "runtime/SystemReason.h"
#include "runtime/Texts.h"

namespace Gateway {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kIdLength = 16;

}  // namespace

std::string HeldHome() {
  return Runtime::HomePath() + "/held";
}

std::string HeldFolder(StringView mailbox) {
  return HeldHome() + "/" + MailboxFileName(mailbox);
}

String MailboxOfFolder(const std::string& folder) {
  return MailboxOfFileName(fs::path(folder).filename().string());
}

std::vector<std::string> AllHeldFolders() {
  const std::string home = HeldHome();
  std::vector<std::string> folders;
  std::error_code error;
  for (fs::directory_iterator entry(home, error); !error && entry != fs::directory_iterator();
       entry.increment(error)) {
    std::error_code gone;
    if (entry->is_directory(gone)) folders.push_back(entry->path().string());
  }
  if (error && error != std::errc::no_such_file_or_directory)
    throw Platform::Failure(Platform::FailureNumber::DeviceFailed, u"Gateway",
                            Runtime::TextOf(Platform::TextNumber::kFileUnreadable, Platform::FromUtf8(home),
                                            Platform::FromUtf8(Runtime::SystemReason(error.value()))));
  std::ranges::sort(folders);
  return folders;
}

void MakeHeldFolder(const std::string& folder) {
  std::error_code error;
  // The last one that is made.
  if (fs::is_directory(folder + "/reasons", error)) return;
  // Each by itself: missing parents would be open to others.
  for (const std::string& part :
       {HeldHome(), folder, folder + "/tmp", folder + "/new", folder + "/cur", folder + "/reasons"})
    Runtime::MakeStoreFolder(part);
  for (const std::string& changed : {folder, HeldHome(), Runtime::HomePath()}) Runtime::SyncFolder(changed);
}

std::string FindHeld(const std::string& folder, const std::string& id) {
  std::error_code error;
  if (fs::exists(folder + "/new/" + id, error)) return folder + "/new/" + id;
  for (fs::directory_iterator entry(folder + "/cur", error); !error && entry != fs::directory_iterator();
       entry.increment(error)) {
    if (IdOfName(entry->path().filename().string()) == id) return entry->path().string();
  }
  return {};
}

std::string PathOfReason(const std::string& folder, const std::string& id) {
  return folder + "/reasons/" + id + ".json";
}

std::string IdOfName(const std::string& name) {
  std::string id = name.substr(0, name.find(':'));
  const bool valid = id.size() == kIdLength && id.find_first_not_of("0123456789abcdef") == std::string::npos;
  return valid ? id : std::string();
}

}  // namespace Gateway
