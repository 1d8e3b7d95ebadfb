// RegUtil: a cursor in the registry. platform/contracts/GeneralServices.h is the contract.
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
  Value SetCurrHive(std::span<Value> arguments);
  Value SetCurrPath(std::span<Value> arguments);
  Value AddKey(std::span<Value> arguments);
  Value DropToSubKey(std::span<Value> arguments);
  Value EnumKeys(std::span<Value> arguments);
  Value DeleteKey(std::span<Value> arguments);
  Value GetValue(std::span<Value> arguments);
  Value AddOrUpdateValue(std::span<Value> arguments);

  // The path of a sub key; nothing before a hive is taken, and for an invalid name.
  std::optional<String> Below(const String& name) const;

  std::optional<Hive> hive_;
  String path_;
  LiveObject live_{liveObjects};
};

}  // namespace TvGeneralServices
