#include "gateway/delivery/HeldList.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <tuple>

#include "gateway/delivery/HeldFolder.h"
#include "mime/InputFile.h"
#include "mime/LimitCheck.h"
#include "mime/Mail.h"
#include "platform/Failure.h"
#include "platform/ProgramTexts.h"
#include "runtime/DurableFile.h"
#include "runtime/SystemReason.h"
#include "runtime/Texts.h"

namespace Gateway {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLargestHeader = std::size_t{64} << 10;

[[noreturn]] void Refuse(const std::string& path, std::int32_t text, int error) {
  throw Platform::Failure(
      Platform::FailureNumber::DeviceFailed, u"Gateway",
      Runtime::TextOf(text, Platform::FromUtf8(path), Platform::FromUtf8(Runtime::SystemReason(error))));
}

void AddMails(const std::string& folder, std::vector<HeldPlace>& places) {
  for (const char* part : {"/new", "/cur"}) {
    std::error_code error;
    for (fs::directory_iterator entry(folder + part, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
      HeldPlace place{folder, IdOfName(entry->path().filename().string()), entry->path().string()};
      struct stat status {};
      if (place.Id.empty() || lstat(place.Path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) continue;
      place.Received = status.st_mtime;
      places.push_back(std::move(place));
    }
    if (error && error != std::errc::no_such_file_or_directory)
      Refuse(folder + part, Platform::TextNumber::kFileUnreadable, error.value());
  }
}

void SortByTime(std::vector<HeldPlace>& places) {
  std::ranges::sort(places, {}, [](const HeldPlace& p) { return std::tie(p.Received, p.Id, p.Folder); });
}

std::string ReadHeader(const std::string& path) {
  std::string header;
  Mime::InputFile file(path);
  for (std::string_view line = file.PeekLine('\n'); !line.empty() && line != "\n" && line != "\r\n";
       line = file.PeekLine('\n')) {
    if (header.size() + line.size() > kLargestHeader) break;
    header += line;
    file.Skip(line.size());
  }
  return header + "\n";
}

// The place with its present path: a mail program may have moved the mail.
std::string PresentPath(const HeldPlace& place) {
  return FindHeld(place.Folder, place.Id);
}

}  // namespace

std::vector<HeldPlace> HeldMails(const std::optional<String>& mailbox) {
  std::vector<HeldPlace> places;
  if (mailbox) {
    AddMails(HeldFolder(*mailbox), places);
  } else {
    for (const std::string& folder : AllHeldFolders()) AddMails(folder, places);
  }
  SortByTime(places);
  return places;
}

HeldDetails DetailsOf(const HeldPlace& place) {
  HeldDetails details;
  details.Why = ReadHeldReason(PathOfReason(place.Folder, place.Id));
  if (details.Why.Mailbox.empty()) details.Why.Mailbox = MailboxOfFolder(place.Folder);
  try {
    Mime::Mail mail = Mime::ReadMail(ReadHeader(place.Path));
    details.From = std::move(mail.FromAddress).value_or(String());
    details.Subject = std::move(mail.Subject);
  } catch (const Mime::LimitExceeded&) {
    // Listed without them, as the mail may be held for that.
  } catch (const std::system_error&) {
    // Removed meanwhile, or unreadable.
  }
  return details;
}

std::optional<std::string> BytesOf(const HeldPlace& place) {
  const std::string path = PresentPath(place);
  if (path.empty()) return std::nullopt;
  try {
    std::string bytes;
    Mime::InputFile(path).TakeAll(bytes, std::string::npos);
    return bytes;
  } catch (const std::system_error& error) {
    if (error.code() == std::errc::no_such_file_or_directory) return std::nullopt;
    Refuse(path, Platform::TextNumber::kFileUnreadable, error.code().value());
  }
}

void ChangeReason(const HeldPlace& place, const HeldReason& reason) {
  const Runtime::FolderLock lock(place.Folder);
  if (!PresentPath(place).empty()) WriteHeldReason(PathOfReason(place.Folder, place.Id), reason);
}

bool RemoveHeld(const HeldPlace& place) {
  const Runtime::FolderLock lock(place.Folder);
  const std::string path = PresentPath(place);
  if (path.empty()) return false;
  if (unlink(path.c_str()) != 0 && errno != ENOENT)
    Refuse(path, Platform::TextNumber::kHeldNotRemoved, errno);
  Runtime::SyncFolder(place.Folder + "/new");
  Runtime::SyncFolder(place.Folder + "/cur");
  unlink(PathOfReason(place.Folder, place.Id).c_str());
  return true;
}

}  // namespace Gateway
