// RegistryKey: reads and deletes registry keys through the sibling TvGeneralServices.
#pragma once

#include <optional>
#include <vector>

#include "platform/contracts/GeneralServices.h"

namespace Host {

using namespace Platform;

class RegistryKey {
 public:
  // Returns nothing if the key doesn't exist. Raises 429 without the sibling.
  static std::optional<RegistryKey> Open(Hive hive, StringView path);

  // The text of a value; empty if the value doesn't exist or is no text.
  String Text(StringView name) const;

  // The names of the sub keys, ordered by name.
  std::vector<String> SubKeys() const;

  // Deletes a sub key with everything below it. Returns false on failure.
  bool Delete(StringView subKey) const { return cursor_.DeleteKey(subKey); }

 private:
  explicit RegistryKey(RegUtil cursor) : cursor_(std::move(cursor)) {}

  RegUtil cursor_;
};

}  // namespace Host
