// RegistryFile: one open store of the registry, and the lock under which it is used.
//
// Inside the run time alone; other code uses RegistryStore, which describes paths, names and failures.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "runtime/Database.h"
#include "runtime/DatabaseState.h"
#include "runtime/RegistryStore.h"

namespace Runtime {

// Identifies the content of a store: equal states of one hive mean equal content.
struct RegistryState {
  std::int64_t Opening = 0;              // number of the opening of a store in this process
  std::optional<DatabaseState> Content;  // without locks; nothing if it can't be told
  std::int64_t OthersWrites = 0;         // as SQLite counts them for one connection, if Content is nothing
  std::int64_t OwnWrites = 0;            // also of a transaction that isn't committed yet
  friend bool operator==(const RegistryState&, const RegistryState&) = default;
};

enum class RegistryUse { Read, Write };

// The keys and values of one file. Writes belong inside a Transaction of Store().
class RegistryFile {
 public:
  // Raises 57 if the file is missing, is no registry, or has the format of another version.
  explicit RegistryFile(const std::string& file);

  // Creates the file, or completes one whose creation was interrupted. Raises 57 for a file with any other
  // content, which is not changed.
  static void Create(const std::string& file);

  Database& Store() { return database_; }

  // False if the file was removed or replaced, or its mode or owner was changed, since it was opened. Within
  // a RegistryScope, before it is read, the file is looked at only if that is longer ago than kLookInterval.
  bool IsStillInPlace(RegistryUse use);

  RegistryState State();

  // Results are cached while State() is unchanged.
  bool KeyExists(StringView path);
  std::optional<String> NameOf(StringView path);
  std::optional<RegistryValue> Read(StringView path, StringView name);

  std::vector<String> SubKeys(StringView path);
  void CreateKey(StringView path);
  bool DeleteKey(StringView path);
  bool Write(StringView path, StringView name, const RegistryValue& value);

 private:
  struct KnownKey {
    std::optional<String> Name;                                          // nothing if there is no such key
    std::map<String, std::optional<RegistryValue>, std::less<>> Values;  // by the names as callers spell them
  };

  std::optional<std::int64_t> Find(StringView path);
  std::optional<String> NameInStore(StringView path);
  std::optional<RegistryValue> ReadFromStore(StringView path, StringView name);
  KnownKey& Known(StringView path);

  Database database_;
  std::int64_t opening_;
  DatabaseWatch watch_;
  dev_t device_ = 0;
  ino_t inode_ = 0;
  mode_t mode_ = 0;
  uid_t owner_ = 0;
  std::chrono::steady_clock::time_point lookedAt_;
  Statement othersWrites_, find_, name_, addKey_, subKeys_, deleteValues_, deleteKeys_, read_, write_;

  std::map<String, KnownKey, std::less<>> known_;  // by the paths as callers spell them
  RegistryState knownAt_;
};

// While one exists, its thread may take up to this time to notice that a store was removed or replaced, or
// that its rights were changed, when it reads it. What is written to the store is always noticed at once. For
// one piece of work, such as one message, that reads the store repeatedly.
class RegistryScope {
 public:
  static constexpr std::chrono::milliseconds kLookInterval{100};
  RegistryScope() { ++depth; }
  RegistryScope(const RegistryScope&) = delete;
  RegistryScope& operator=(const RegistryScope&) = delete;
  ~RegistryScope() { --depth; }
  static bool IsOpen() { return depth > 0; }

 private:
  static thread_local int depth;
};

// The store of a hive in the current home folder, locked for this thread while the object exists. Stores
// remain open between uses. A store is closed if the home folder has changed, and after a failure.
class RegistryAccess {
 public:
  explicit RegistryAccess(Hive hive, RegistryUse use = RegistryUse::Read);
  RegistryAccess(const RegistryAccess&) = delete;
  RegistryAccess& operator=(const RegistryAccess&) = delete;
  ~RegistryAccess();

  RegistryFile* operator->() { return file_; }
  RegistryFile& operator*() { return *file_; }

 private:
  std::unique_lock<std::mutex> lock_;
  int exceptionsBefore_;
  Hive hive_;
  RegistryFile* file_;
};

}  // namespace Runtime
