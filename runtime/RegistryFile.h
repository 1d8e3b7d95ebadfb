// RegistryFile: one open store of the registry, and the lock under which it is used.
//
// Inside the run time alone; others go through RegistryStore. Paths and names are those of RegistryStore.
#pragma once

#include <sys/types.h>

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "runtime/Database.h"
#include "runtime/RegistryStore.h"

namespace Runtime {

// What tells whether a store has changed: equal states of one hive have equal content.
struct RegistryState {
  std::int64_t Opening = 0;       // which opening of a store in this process
  std::int64_t OthersWrites = 0;  // as SQLite counts them for one connection
  std::int64_t OwnWrites = 0;
  friend bool operator==(const RegistryState&, const RegistryState&) = default;
};

// The keys and values of one file. Writes belong inside a Transaction of Store().
class RegistryFile {
 public:
  // Raises 57 where the file is missing, is no registry, or was made by a newer version.
  explicit RegistryFile(const std::string& file);

  // Makes the file, or finishes one whose making was cut short. One that holds anything else is left alone
  // and raises 57.
  static void Create(const std::string& file);

  Database& Store() { return database_; }

  // False when the file was removed or replaced, or given other rights, since it was opened.
  bool IsStillInPlace() const;

  RegistryState State();

  // What was read is remembered as long as the state stays.
  bool KeyExists(StringView path);
  std::optional<RegistryValue> Read(StringView path, StringView name);

  std::vector<String> SubKeys(StringView path);
  void CreateKey(StringView path);
  bool DeleteKey(StringView path);
  bool Write(StringView path, StringView name, const RegistryValue& value);

 private:
  struct KnownKey {
    bool Exists = false;
    std::map<String, std::optional<RegistryValue>, std::less<>> Values;  // by the names that were asked for
  };

  std::optional<std::int64_t> Find(StringView path);
  std::optional<RegistryValue> ReadFromStore(StringView path, StringView name);
  KnownKey& Known(StringView path);

  Database database_;
  std::int64_t opening_;
  dev_t device_ = 0;
  ino_t inode_ = 0;
  mode_t mode_ = 0;
  uid_t owner_ = 0;
  Statement othersWrites_, find_, addKey_, subKeys_, deleteValues_, deleteKeys_, read_, write_;

  std::map<String, KnownKey, std::less<>> known_;  // by the paths that were asked for
  RegistryState knownAt_;
};

// The store of a hive in the present home folder, locked for this thread as long as the object lives. Stores
// stay open from one use to the next; one of another home folder, or one whose use ended in a failure, is
// closed.
class RegistryAccess {
 public:
  explicit RegistryAccess(Hive hive);
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
