#include "siblings/Talvane40/ProjectCreation.h"

#include <algorithm>
#include <filesystem>

#include "platform/Failure.h"
#include "platform/ReasonTexts.h"
#include "runtime/DurableFile.h"
#include "runtime/Texts.h"
#include "siblings/Talvane40/PasswordHash.h"
#include "siblings/Talvane40/ProjectLocation.h"

namespace Talvane40 {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Refuse(std::int32_t number, std::int32_t text, const fs::path& path) {
  throw Failure(number, u"Talvane40", Runtime::TextOf(text, FromUtf8(path.string())));
}

// False also for a path that can't be reached; creating the file then gives the reason.
bool Exists(const fs::path& path) {
  std::error_code ignored;
  return fs::exists(fs::symlink_status(path, ignored));
}

bool IsMissing(const fs::path& folder) {
  std::error_code ignored;
  const fs::file_status status = fs::status(folder, ignored);
  return fs::status_known(status) && !fs::is_directory(status);
}

constexpr const char* kEndsOfADatabase[] = {"", "-wal", "-shm", "-journal"};

// Fills the database. After a failure no file of SQLite is left.
void FillDatabase(const std::string& file, StringView name, const DescribedUser& owner, StringView password) {
  try {
    ProjectDatabase::Create(file, name, owner, HashPassword(password));
  } catch (...) {
    std::error_code ignored;
    for (const char* end : kEndsOfADatabase) fs::remove(file + end, ignored);
    throw;
  }
}

// A valid file name for the database that neither a file nor a log of a former database has.
std::string FreeDatabaseName(const fs::path& projectFile) {
  const bool plain = EqualsIgnoreCase(FromUtf8(projectFile.extension().string()), u".TVS");
  std::string stem = (plain ? projectFile.stem() : projectFile.filename()).string();
  if (stem.front() == ' ' || std::ranges::any_of(stem, [](unsigned char c) { return c < 0x20; }))
    stem = "project";
  for (int i = 1;; ++i) {
    const std::string name = stem + (i == 1 ? "" : "-" + std::to_string(i)) + ".db";
    bool free = true;
    for (const char* end : kEndsOfADatabase) {
      free = free && !Exists(projectFile.parent_path() / (name + end));
    }
    if (free) return name;
  }
}

}  // namespace

void CreateProject(StringView path, StringView name, const DescribedUser& owner, StringView password) {
  const fs::path file = PathOf(path);
  const fs::path folder = file.parent_path();
  if (Exists(file)) Refuse(FailureNumber::AlreadyExists, TextNumber::kProjectFileExists, file);
  if (IsMissing(folder)) Refuse(FailureNumber::PathNotFound, TextNumber::kProjectFolderMissing, folder);

  const std::string databaseName = FreeDatabaseName(file);
  Runtime::StagedFile database(folder.string());
  database.Release();
  FillDatabase(database.Path(), name, owner, password);
  Runtime::StagedFile projectFile(folder.string());
  projectFile.Write(NewProjectFileText(name, databaseName));

  database.Publish((folder / databaseName).string());
  projectFile.Publish(file.string());
  Runtime::SyncFolder(folder.string());
  projectFile.Keep();
  database.Keep();
}

}  // namespace Talvane40
