#include "gateway/sources/PasswordFile.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <vector>

#include "gateway/sources/SourceFailure.h"
#include "platform/ProgramTexts.h"
#include "platform/Text.h"
#include "runtime/DurableFile.h"

namespace Gateway {
namespace {

namespace TextNumber = Platform::TextNumber;

// Above any password. A wrong file, such as a disk image, isn't read.
constexpr std::size_t kLargestFile = std::size_t{64} << 10;

// The user's name, or its number if it has none.
std::string UserName(uid_t user) {
  passwd entry{};
  passwd* found = nullptr;
  std::vector<char> names(std::size_t{16} << 10);
  if (getpwuid_r(user, &entry, names.data(), names.size(), &found) == 0 && found) return found->pw_name;
  return std::to_string(user);
}

}  // namespace

std::string ReadPasswordFile(const std::string& path) {
  // It raises the reason if the file can't be read.
  const Runtime::SmallFile file = Runtime::ReadSmallFile(path, kLargestFile);
  struct stat status {};
  if (stat(path.c_str(), &status) == 0 && status.st_uid != geteuid() && status.st_uid != 0)
    RaiseSource(TextNumber::kPasswordFileOwner, path, UserName(geteuid()));
  if ((file.Mode & (S_IRWXG | S_IRWXO)) != 0) RaiseSource(TextNumber::kPasswordFileOpen, path);
  std::string line = file.Content.substr(0, file.Content.find('\n'));
  if (line.starts_with("\xEF\xBB\xBF")) line.erase(0, 3);
  if (line.ends_with('\r')) line.pop_back();
  if (line.empty() || !Platform::IsUtf8(line) || Platform::HasControl(Platform::FromUtf8(line)))
    RaiseSource(TextNumber::kPasswordFileContent, path);
  return line;
}

}  // namespace Gateway
