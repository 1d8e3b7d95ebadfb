// RegUtil: a cursor in the registry. It stands at one key of one hive, and every operation works from there.
//
// Until a hive is taken every other operation gives false. A name with a backslash, an empty one and one of
// more than 255 characters name no key: operations on them give false. A registry that can't be read or
// written is a raised failure.
#pragma once

#include <optional>

#include "platform/Component.h"
#include "platform/Object.h"
#include "platform/contracts/GeneralServices.h"
#include "siblings/TvGeneralServices/LiveObjects.h"

namespace TvGeneralServices {

using namespace Platform;

class RegUtil : public ObjectWithMembers<RegUtil> {
 public:
  static const Table& Members();

 private:
  // Takes a hive and stands at its root. False for a number that is no hive.
  Value SetCurrHive(std::span<Value> arguments);

  // Stands at a path from the hive's root; the empty path is the root. False, and no move, if it doesn't
  // exist.
  Value SetCurrPath(std::span<Value> arguments);

  Value AddKey(std::span<Value> arguments);
  Value DropToSubKey(std::span<Value> arguments);

  // Puts the names of the sub keys into the array argument, in the place of what it held. False if the key is
  // gone; the array is empty then.
  Value EnumKeys(std::span<Value> arguments);

  // Removes the sub key with its values and all keys below. True also where there was none: it is gone.
  Value DeleteKey(std::span<Value> arguments);

  // Fills the RegValue's Value and DataType. False, and nothing changed, if there is no such value.
  Value GetValue(std::span<Value> arguments);

  // Stores the RegValue's Value as its DataType says. False if the key is gone.
  Value AddOrUpdateValue(std::span<Value> arguments);

  // The path of a sub key, or nothing where no hive was taken or the name is none.
  std::optional<String> Below(const String& name) const;

  std::optional<Hive> hive_;
  String path_;
  LiveObject live_{liveObjects};
};

}  // namespace TvGeneralServices
