#include "gateway/sources/SettledMails.h"

#include <fcntl.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <filesystem>

#include "gateway/sources/SourceFailure.h"
#include "platform/ProgramTexts.h"
#include "runtime/DurableFile.h"
#include "runtime/Folders.h"
#include "runtime/StoreFolder.h"
#include "runtime/SystemReason.h"

namespace Gateway {
namespace {

// A million ids of the greatest length.
constexpr std::size_t kLargestFile = std::size_t{72} << 20;

// A file name for any account: other characters than these become % and two digits.
std::string FileNameOf(const std::string& account) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string name = "pop3-";
  for (const char c : account) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80 && (std::isalnum(byte) != 0 || c == '@' || c == '.' || c == '-' || c == '_'))
      name += c;
    else
      name += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
  }
  return name;
}

}  // namespace

SettledMails::SettledMails(const std::string& account) {
  const std::string folder = Runtime::HomePath() + "/state";
  Runtime::MakeStoreFolder(folder);
  path_ = folder + "/" + FileNameOf(account);
  Load();
}

void SettledMails::Load() {
  std::error_code error;
  if (!std::filesystem::exists(path_, error) && !error) return Runtime::CreateSmallFile(path_, "");
  const std::string content = Runtime::ReadSmallFile(path_, kLargestFile).Content;
  std::size_t begin = 0;
  for (std::size_t end; (end = content.find('\n', begin)) != std::string::npos; begin = end + 1)
    ids_.insert(content.substr(begin, end - begin));
  // A line that a crash has cut is no id, and the next id must not be appended to it.
  if (begin < content.size()) Save();
}

void SettledMails::Add(const std::string& id) {
  const std::string line = id + "\n";
  const Runtime::Descriptor file(open(path_.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC));
  if (!file || write(file.Number(), line.data(), line.size()) != static_cast<ssize_t>(line.size()) ||
      fdatasync(file.Number()) != 0)
    RaiseSource(Platform::TextNumber::kSettledMailsDamaged, path_, Runtime::SystemReason(errno));
  ids_.insert(id);
}

void SettledMails::KeepOnly(const std::unordered_set<std::string>& present) {
  if (std::erase_if(ids_, [&](const std::string& id) { return !present.contains(id); }) > 0) Save();
}

void SettledMails::Save() const {
  std::string content;
  for (const std::string& id : ids_) content += id + "\n";
  Runtime::LockedFile(path_, kLargestFile).Replace(content);
}

}  // namespace Gateway
