#include "siblings/Talvane40/ProjectCreation.h"

#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include "platform/Failure.h"
#include "siblings/Talvane40/PasswordHash.h"
#include "siblings/Talvane40/ProjectFile.h"

namespace Talvane40 {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Refuse(const std::string& what, std::int32_t number = FailureNumber::DeviceFailed) {
  throw Failure(number, u"Talvane40", FromUtf8(what));
}

[[noreturn]] void RefuseForSystem(const fs::path& path) {
  Refuse("The project can't be created: " + path.string() + ": " + std::strerror(errno) + ".");
}

bool Exists(const fs::path& path) {
  std::error_code ignored;
  return fs::symlink_status(path, ignored).type() != fs::file_type::not_found;
}

void WriteToDisk(const fs::path& path, std::string_view bytes, int flags) {
  const int descriptor = open(path.c_str(), flags | O_CLOEXEC);
  if (descriptor < 0) RefuseForSystem(path);
  bool good = true;
  while (good && !bytes.empty()) {
    const ssize_t count = write(descriptor, bytes.data(), bytes.size());
    good = count >= 0 || errno == EINTR;
    if (count > 0) bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  good = good && fsync(descriptor) == 0;
  const int error = errno;
  close(descriptor);
  errno = error;
  if (!good) RefuseForSystem(path);
}

// A new empty file of mode 0600 beside the project file; gone with this object unless it was published.
class NewFile {
 public:
  explicit NewFile(const fs::path& folder) {
    std::string pattern = folder / ".talvane-XXXXXX";
    const int descriptor = mkstemp(pattern.data());
    if (descriptor < 0) RefuseForSystem(folder);
    close(descriptor);
    path_ = pattern;
  }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  ~NewFile() {
    std::error_code ignored;
    for (const char* end : {"", "-wal", "-shm", "-journal"}) fs::remove(path_.string() + end, ignored);
  }

  const fs::path& Path() const { return path_; }

  // Gives the file its name, which nothing may have had, also if someone else takes it at this moment.
  void Publish(const fs::path& name) {
    const int renamed = renameat2(AT_FDCWD, path_.c_str(), AT_FDCWD, name.c_str(), RENAME_NOREPLACE);
    if (renamed != 0 && (errno != EINVAL || link(path_.c_str(), name.c_str()) != 0)) RefuseForSystem(name);
  }

 private:
  fs::path path_;
};

// A file name for the database, as it can stand in the project file, that neither a database nor what one
// leaves behind has.
std::string FreeDatabaseName(const fs::path& projectFile) {
  const bool plain = EqualsIgnoreCase(FromUtf8(projectFile.extension().string()), u".TVS");
  std::string stem = (plain ? projectFile.stem() : projectFile.filename()).string();
  if (stem.front() == ' ' || std::ranges::any_of(stem, [](unsigned char c) { return c < 0x20; }))
    stem = "project";
  for (int i = 1;; ++i) {
    const std::string name = stem + (i == 1 ? "" : "-" + std::to_string(i)) + ".db";
    bool free = true;
    for (const char* end : {"", "-wal", "-shm", "-journal"}) {
      free = free && !Exists(projectFile.parent_path() / (name + end));
    }
    if (free) return name;
  }
}

}  // namespace

void CreateProject(StringView path, StringView name, const User& owner, StringView password) {
  const fs::path file = PathOf(path);
  const fs::path folder = file.parent_path();
  if (Exists(file))
    Refuse("The file " + file.string() + " exists already. Choose another name for the project.",
           FailureNumber::AlreadyExists);
  if (!fs::is_directory(folder))
    Refuse("The folder " + folder.string() + " doesn't exist. Make it first.", FailureNumber::PathNotFound);

  const std::string databaseName = FreeDatabaseName(file);
  NewFile database(folder);
  ProjectDatabase::Create(database.Path().string(), name, owner, HashPassword(password));
  WriteToDisk(database.Path(), {}, O_RDWR);
  NewFile projectFile(folder);
  WriteToDisk(projectFile.Path(), NewProjectFileText(name, databaseName), O_WRONLY);

  const fs::path databaseFile = folder / databaseName;
  database.Publish(databaseFile);
  try {
    projectFile.Publish(file);
    WriteToDisk(folder, {}, O_RDONLY | O_DIRECTORY);
  } catch (...) {
    fs::remove(databaseFile);
    throw;
  }
}

}  // namespace Talvane40
