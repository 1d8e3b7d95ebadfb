// RegistryKey: reads registry keys through the sibling TvGeneralServices.
#pragma once

#include <optional>

#include "platform/contracts/GeneralServices.h"

namespace Host {

using namespace Platform;

class RegistryKey {
 public:
  // Returns nothing if the key doesn't exist. Raises 429 without the sibling.
  static std::optional<RegistryKey> Open(Hive hive, StringView path);

  // The text of a value; empty if the value doesn't exist or is no text.
  String Text(StringView name) const;

 private:
  explicit RegistryKey(RegUtil cursor) : cursor_(std::move(cursor)) {}

  RegUtil cursor_;
};

}  // namespace Host
