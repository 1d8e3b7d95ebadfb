// RegistryKey: what the host reads and removes in the registry itself, through the sibling component that the
// mailbox component uses too.
#pragma once

#include <optional>
#include <vector>

#include "platform/contracts/GeneralServices.h"

namespace Host {

using namespace Platform;

class RegistryKey {
 public:
  // Nothing where the key doesn't exist. Raises 429 without the sibling.
  static std::optional<RegistryKey> Open(Hive hive, StringView path);

  // The text of a value; the empty string where there is none, or one that is no text.
  String Text(StringView name) const;

  // The names of the sub keys, ordered by name.
  std::vector<String> SubKeys() const;

  // Removes a sub key with all that it holds. False if that failed.
  bool Delete(StringView subKey) const { return cursor_.DeleteKey(subKey); }

 private:
  explicit RegistryKey(RegUtil cursor) : cursor_(std::move(cursor)) {}

  RegUtil cursor_;
};

}  // namespace Host
