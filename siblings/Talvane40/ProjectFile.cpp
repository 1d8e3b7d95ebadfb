#include "siblings/Talvane40/ProjectFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <map>

#include "platform/Failure.h"

namespace Talvane40 {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLargest = 1 << 20;  // bytes; no project file comes near it

[[noreturn]] void Refuse(const fs::path& path, const std::string& why,
                         std::int32_t number = FailureNumber::DeviceFailed) {
  throw Failure(number, u"Talvane40", FromUtf8("The file " + path.string() + " " + why));
}

class OpenFile {
 public:
  // Not blocking, so that a pipe in the file's place can't hold the program.
  explicit OpenFile(const fs::path& path)
      : descriptor_(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {
    if (descriptor_ < 0) {
      if (errno == ENOENT || errno == ENOTDIR) Refuse(path, "doesn't exist.", FailureNumber::PathNotFound);
      Refuse(path, errno == EACCES ? "may not be read. Check the rights on it."
                                   : std::string("can't be read: ") + std::strerror(errno) + ".");
    }
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;
  ~OpenFile() { close(descriptor_); }
  int Descriptor() const { return descriptor_; }

 private:
  int descriptor_;
};

std::string ReadAll(const fs::path& path) {
  const OpenFile file(path);
  struct stat status {};
  if (fstat(file.Descriptor(), &status) == 0 && !S_ISREG(status.st_mode)) {
    Refuse(path, S_ISDIR(status.st_mode) ? "is a folder, not a project file." : "is not a project file.");
  }
  std::string bytes(kLargest + 1, '\0');
  std::size_t length = 0;
  while (length < bytes.size()) {
    const ssize_t count = read(file.Descriptor(), bytes.data() + length, bytes.size() - length);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) Refuse(path, std::string("can't be read: ") + std::strerror(errno) + ".");
    if (count == 0) break;
    length += static_cast<std::size_t>(count);
  }
  if (length > kLargest) Refuse(path, "is not a project file: it is too large.");
  bytes.resize(length);
  return bytes;
}

std::string_view Trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(" \t\r");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

std::string Lowered(std::string_view text) {
  return ToUtf8(FoldCase(FromUtf8(text)));
}

// The keys of the section [Project], in lower case. Of a key that comes twice the first counts.
std::map<std::string, std::string> ProjectSection(std::string_view text) {
  std::map<std::string, std::string> keys;
  bool inside = false;
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = Trimmed(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.starts_with('[')) {
      inside = Lowered(line) == "[project]";
    } else if (const auto equals = line.find('='); inside && equals != std::string_view::npos) {
      keys.emplace(Lowered(Trimmed(line.substr(0, equals))), Trimmed(line.substr(equals + 1)));
    }
  }
  return keys;
}

}  // namespace

fs::path PathOf(StringView path) {
  if (path.empty()) throw Failure(FailureNumber::RefusedInput, u"Talvane40", u"No project path is given.");
  if (path.find(u'\0') != StringView::npos)
    Refuse(ToUtf8(path.substr(0, path.find(u'\0'))), "has no proper name.", FailureNumber::RefusedInput);
  return fs::absolute(ToUtf8(path));
}

ProjectFile ReadProjectFile(StringView path) {
  const fs::path file = PathOf(path);
  const std::string text = ReadAll(file);
  auto keys = ProjectSection(text);
  const std::string& format = keys["format"];
  const std::string& name = keys["name"];
  const std::string& database = keys["database"];
  if (!IsUtf8(text) || text.find('\0') != std::string::npos || format.empty())
    Refuse(file, "is not a project file.");
  if (format != "1")
    Refuse(file, "was made by a newer version of Talvane, whose projects can't be opened here.");
  if (name.empty() || database.empty()) {
    Refuse(file, "is damaged: its section [Project] lacks the name or the database.");
  }
  return {FromUtf8(name), (file.parent_path() / database).lexically_normal()};
}

std::string NewProjectFileText(StringView name, const std::string& database) {
  return "[Project]\nFormat=1\nName=" + ToUtf8(name) + "\nDatabase=" + database + "\n";
}

}  // namespace Talvane40
