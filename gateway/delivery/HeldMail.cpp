#include "gateway/delivery/HeldMail.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>

#include "gateway/delivery/Digest.h"
#include "gateway/delivery/HeldFolder.h"
#include "runtime/DurableFile.h"

namespace Gateway {
namespace {

namespace fs = std::filesystem;
using std::chrono::seconds;

constexpr std::size_t kIdLength = 16;
constexpr std::chrono::hours kDay{24};

// Longer than any Keep takes.
constexpr std::chrono::hours kAgeOfRemains{48};

// A file whose time is that of the last Expire.
constexpr const char* kStamp = "/expired";

// How long ago a file was written; nothing if it doesn't exist.
std::optional<seconds> AgeOf(const std::string& path) {
  struct stat status {};
  if (lstat(path.c_str(), &status) != 0) return std::nullopt;
  return seconds(time(nullptr) - status.st_mtime);
}

void Stamp(const std::string& path) {
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
  if (file < 0) return;
  futimens(file, nullptr);
  close(file);
}

// Calls the function for each file of a folder that is older than the age.
template <class Act>
void ForOldFiles(const std::string& folder, seconds age, Act act) {
  std::error_code error;
  for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
       entry.increment(error)) {
    const std::optional<seconds> present = AgeOf(entry->path().string());
    if (present && *present > age) act(entry->path());
  }
}

}  // namespace

HeldMail::HeldMail(StringView mailbox) : folder_(HeldFolder(mailbox)), mailbox_(mailbox) {}

std::string HeldMail::Keep(std::string_view bytes, const HeldReason& reason) {
  const std::string id = Sha256({bytes}).substr(0, kIdLength);
  MakeHeldFolder(folder_);
  const Runtime::FolderLock lock(folder_);
  const std::string reasonPath = PathOfReason(folder_, id);
  const bool held = !FindHeld(folder_, id).empty();
  try {
    HeldReason stored = reason;
    stored.Mailbox = mailbox_;
    WriteHeldReason(reasonPath, stored);
    if (!held) {
      Runtime::StagedFile file(folder_ + "/tmp");
      file.Write(bytes);
      file.Publish(folder_ + "/new/" + id);
      Runtime::SyncFolder(folder_ + "/new");
      file.Keep();
    }
  } catch (...) {
    if (!held) unlink(reasonPath.c_str());
    throw;
  }
  return id;
}

void HeldMail::Expire(int days) try {
  const std::optional<seconds> last = AgeOf(folder_ + kStamp);
  // A time in the future is that of a clock which was wrong.
  if ((last && *last >= seconds(0) && *last < kDay) || !AgeOf(folder_)) return;
  const Runtime::FolderLock lock(folder_);
  Stamp(folder_ + kStamp);
  for (const char* part : {"/new", "/cur"}) {
    if (days <= 0) break;
    ForOldFiles(folder_ + part, kDay * days, [&](const fs::path& mail) {
      const std::string id = IdOfName(mail.filename().string());
      if (!id.empty() && unlink(mail.c_str()) == 0) unlink(PathOfReason(folder_, id).c_str());
    });
  }
  ForOldFiles(folder_ + "/tmp", kAgeOfRemains, [](const fs::path& file) { unlink(file.c_str()); });
  ForOldFiles(folder_ + "/reasons", kAgeOfRemains, [&](const fs::path& reason) {
    if (FindHeld(folder_, reason.stem().string()).empty()) unlink(reason.c_str());
  });
} catch (const std::exception&) {
  // Another process has the lock, or the folder can't be read.
}

}  // namespace Gateway
