#include "runtime/RegistryStore.h"

#include <pthread.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <exception>
#include <memory>

#include "runtime/DurableFile.h"
#include "runtime/Folders.h"
#include "runtime/RegistryFile.h"
#include "runtime/StoreFolder.h"

namespace Runtime {
namespace {

constexpr std::size_t kLongestKeyName = 255;  // characters

std::string PathOf(Hive hive) {
  if (hive == Hive::LocalMachine) return HomePath() + "/machine.registry";
  if (hive == Hive::CurrentUser) return HomePath() + "/user-" + std::to_string(geteuid()) + ".registry";
  Raise(FailureNumber::InvalidArgument, u"there is no such hive of the registry");
}

// The open stores, one for each hive. They are closed before a fork: SQLite doesn't allow a forked child to
// use an open database.
class OpenStores {
 public:
  static OpenStores& Of() {
    static OpenStores& stores = *new OpenStores;  // never destroyed: it may be used by static destructors
    return stores;
  }

  std::mutex& Lock() { return lock_; }

  RegistryFile& Open(Hive hive, RegistryUse use) {
    auto& store = StoreOf(hive);
    const std::string file = PathOf(hive);
    if (store && (store->Store().File() != file || !store->IsStillInPlace(use))) store.reset();
    if (!store) store = std::make_unique<RegistryFile>(file);
    return *store;
  }

  void Close(Hive hive) { StoreOf(hive).reset(); }

 private:
  OpenStores() {
    pthread_atfork(&BeforeFork, &AfterFork, &AfterFork);
    std::atexit(&AtExit);
  }

  // Closing a store writes its log into the main file, which can then be copied alone.
  static void AtExit() {
    const std::unique_lock guard(Of().lock_, std::try_to_lock);
    if (!guard) return;
    for (auto& store : Of().stores_) store.reset();
  }

  static void BeforeFork() {
    Of().lock_.lock();
    for (auto& store : Of().stores_) store.reset();
  }
  static void AfterFork() { Of().lock_.unlock(); }

  std::unique_ptr<RegistryFile>& StoreOf(Hive hive) { return stores_[hive == Hive::LocalMachine ? 0 : 1]; }

  std::mutex lock_;
  std::array<std::unique_ptr<RegistryFile>, 2> stores_;
};

// Does the work in a transaction.
template <class Work>
auto Durably(Hive hive, Work work) {
  RegistryAccess registry(hive, RegistryUse::Write);
  Transaction transaction(registry->Store());
  const auto result = work(*registry);
  transaction.Commit();
  return result;
}

}  // namespace

RegistryAccess::RegistryAccess(Hive hive, RegistryUse use)
    : lock_(OpenStores::Of().Lock()),
      exceptionsBefore_(std::uncaught_exceptions()),
      hive_(hive),
      file_(&OpenStores::Of().Open(hive, use)) {}

RegistryAccess::~RegistryAccess() {
  // After a failure the cache may not match the file.
  if (std::uncaught_exceptions() > exceptionsBefore_) OpenStores::Of().Close(hive_);
}

void RegistryStore::Create(Hive hive) {
  const std::string file = PathOf(hive);
  const std::string folder = FolderOfPath(file);
  MakeStoreFolder(folder);
  RequireTrusted(folder);
  const FolderLock lock(folder);
  RegistryFile::Create(file);
}

String RegistryStore::FileOf(Hive hive) {
  return FromUtf8(PathOf(hive));
}

bool RegistryStore::IsKeyName(StringView name) {
  return !name.empty() && name.size() <= kLongestKeyName &&
         name.find_first_of(StringView(u"\\\0", 2)) == StringView::npos;
}

bool RegistryStore::KeyExists(Hive hive, StringView path) {
  return RegistryAccess(hive)->KeyExists(path);
}

std::optional<String> RegistryStore::NameOf(Hive hive, StringView path) {
  return RegistryAccess(hive)->NameOf(path);
}

void RegistryStore::CreateKey(Hive hive, StringView path) {
  Durably(hive, [&](RegistryFile& file) {
    file.CreateKey(path);
    return true;
  });
}

std::vector<String> RegistryStore::SubKeys(Hive hive, StringView path) {
  return RegistryAccess(hive)->SubKeys(path);
}

bool RegistryStore::DeleteKey(Hive hive, StringView path) {
  return Durably(hive, [&](RegistryFile& file) { return file.DeleteKey(path); });
}

std::optional<RegistryValue> RegistryStore::Read(Hive hive, StringView path, StringView name) {
  return RegistryAccess(hive)->Read(path, name);
}

bool RegistryStore::Write(Hive hive, StringView path, StringView name, const RegistryValue& value) {
  return Durably(hive, [&](RegistryFile& file) { return file.Write(path, name, value); });
}

}  // namespace Runtime
