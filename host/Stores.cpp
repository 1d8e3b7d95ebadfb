#include "host/Stores.h"
#include "platform/StoredNames.h"

#include <filesystem>

#include "host/CommandError.h"
#include "runtime/Folders.h"
#include "runtime/RegistryStore.h"

namespace Host {

using Runtime::RegistryStore;

String ShownLibraryFolder() {
  const String folder = Runtime::LibraryFolder();
  std::error_code error;
  const auto resolved = std::filesystem::canonical(ToUtf8(folder), error);
  return error ? folder : FromUtf8(resolved.string());
}

void RequireStore(Hive hive, ExitCode code) {
  const String file = RegistryStore::FileOf(hive);
  std::error_code error;
  const auto status = std::filesystem::status(std::filesystem::path(ToUtf8(file)), error);
  // A store that can't be looked at for another reason tells that reason when it is opened.
  if (status.type() == std::filesystem::file_type::not_found)
    throw CommandError(
        code, u"there is no store " + file + u": run tvmail init first, or mount the disk that it is on");
}

void RequireStores() {
  RequireStore(Hive::LocalMachine);
  RequireStore(Hive::CurrentUser);
  if (!RegistryStore::KeyExists(Hive::LocalMachine, RegistryPath::kMailBoxes) ||
      !RegistryStore::KeyExists(Hive::CurrentUser, RegistryPath::kTalvane))
    throw CommandError(NotConfigured, "the stores were never set up to their end: run tvmail init first");
}

}  // namespace Host
