#include "host/Stores.h"

#include <filesystem>

#include "host/CommandError.h"
#include "platform/StoredNames.h"
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
  // For any other error, opening the store reports the reason.
  if (status.type() == std::filesystem::file_type::not_found)
    throw CommandError(code, TextNumber::kStoreMissing, file);
}

void RequireStores() {
  RequireStore(Hive::LocalMachine);
  // Opened before the user's store is required: if it belongs to another user, that is the reason to report.
  const bool hasMailBoxes = RegistryStore::KeyExists(Hive::LocalMachine, RegistryPath::kMailBoxes);
  RequireStore(Hive::CurrentUser);
  if (!hasMailBoxes || !RegistryStore::KeyExists(Hive::CurrentUser, RegistryPath::kTalvane))
    throw CommandError(NotConfigured, TextNumber::kSetUpIncomplete);
}

}  // namespace Host
