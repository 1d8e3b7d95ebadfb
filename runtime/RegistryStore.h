// RegistryStore: the registry's keys and values, one file for the machine-wide hive and one for each user.
//
// A path is key names joined by backslashes. Names match without regard to case and keep the spelling of
// their creation. Every write is one durable transaction. Any thread may call. A store that is missing,
// damaged, locked for longer than the patience, not writable or not to be trusted (StoreFolder.h) raises 57
// with the file's name and the reason; nothing is ever emptied to repair it.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/Value.h"
#include "platform/contracts/GeneralServices.h"

namespace Runtime {

using namespace Platform;

// A stored value: its type as RegValue.DataType numbers it (1 string, 3 bytes, 4 number), and its content.
struct RegistryValue {
  std::int32_t Type = 1;
  Value Content;
};

class RegistryStore {
 public:
  // Makes the store's file where it doesn't exist, mode 0600 in a folder of mode 0700. Safe to repeat.
  static void Create(Hive hive);

  // The file of a hive, for messages.
  static String FileOf(Hive hive);

  // A name that a key can have: not empty, at most 255 characters, without a backslash and without a NUL. A
  // path with any other name in it leads to no key.
  static bool IsKeyName(StringView name);

  static bool KeyExists(Hive hive, StringView path);

  // Makes the key, and its parents, where they don't exist. Raises 5 for a path with a name that no key can
  // have.
  static void CreateKey(Hive hive, StringView path);

  // The names of the sub keys, ordered by name. Empty for a key that doesn't exist.
  static std::vector<String> SubKeys(Hive hive, StringView path);

  // Removes the key with all its values and sub keys. False if there is none. Raises 5 for the root.
  static bool DeleteKey(Hive hive, StringView path);

  static std::optional<RegistryValue> Read(Hive hive, StringView path, StringView name);

  // False if the key doesn't exist.
  static bool Write(Hive hive, StringView path, StringView name, const RegistryValue& value);
};

}  // namespace Runtime
