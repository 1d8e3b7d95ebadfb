// RegistryStore: the registry's keys and values, one file for the machine-wide hive and one for each user.
//
// A path is key names joined by backslashes; the empty path is the root. Names are compared without regard to
// case and keep the spelling of their creation. Every write is one durable transaction. Any thread. A store
// that is missing, damaged, locked for longer than BusyTimeout, not writable or not to be trusted
// (StoreFolder.h) raises 57 with the file's name and the reason; it is never repaired by emptying it.
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
  // Creates the store's file, mode 0600 in a folder of mode 0700, if it doesn't exist. Safe to repeat.
  static void Create(Hive hive);

  // The path of the hive's file, for messages.
  static String FileOf(Hive hive);

  // True for a valid key name: 1 to 255 characters without a backslash and a NUL. No key exists at a path
  // with an invalid name.
  static bool IsKeyName(StringView name);

  static bool KeyExists(Hive hive, StringView path);

  // The last name of the path, in the spelling of the key's creation; nothing if there is no such key.
  static std::optional<String> NameOf(Hive hive, StringView path);

  // Creates the key and its parents if they don't exist. Raises 5 for a path with an invalid name.
  static void CreateKey(Hive hive, StringView path);

  // The names of the sub keys, ordered by folded name. Empty if the key doesn't exist.
  static std::vector<String> SubKeys(Hive hive, StringView path);

  // Removes the key with its values and all keys below it. False if it doesn't exist. Raises 5 for the root.
  static bool DeleteKey(Hive hive, StringView path);

  // Nothing if there is no such key or value. The empty name is the key's default value.
  static std::optional<RegistryValue> Read(Hive hive, StringView path, StringView name);

  // Creates or replaces a value. False if the key doesn't exist. Raises 5 for an unknown type, 13 for content
  // that can't be converted to the type.
  static bool Write(Hive hive, StringView path, StringView name, const RegistryValue& value);
};

}  // namespace Runtime
