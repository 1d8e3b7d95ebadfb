#include "siblings/TvGeneralServices/RegUtil.h"

#include "runtime/RegistryStore.h"

namespace TvGeneralServices {
namespace {

using Runtime::RegistryStore;

RegValue Required(const Value& argument) {
  RegValue value(argument.ToObject());
  if (!value) Raise(FailureNumber::ObjectNotSet, u"the RegValue argument");
  return value;
}

}  // namespace

const RegUtil::Table& RegUtil::Members() {
  static const Table table = {
      Method(u"SetCurrHive", 1, &RegUtil::SetCurrHive),
      Method(u"SetCurrPath", 1, &RegUtil::SetCurrPath),
      Method(u"AddKey", 1, &RegUtil::AddKey),
      Method(u"DropToSubKey", 1, &RegUtil::DropToSubKey),
      Method(u"EnumKeys", 1, &RegUtil::EnumKeys),
      Method(u"DeleteKey", 1, &RegUtil::DeleteKey),
      Method(u"GetValue", 1, &RegUtil::GetValue),
      Method(u"AddOrUpdateValue", 1, &RegUtil::AddOrUpdateValue),
  };
  return table;
}

std::optional<String> RegUtil::Below(const String& name) const {
  if (!hive_ || !RegistryStore::IsKeyName(name)) return {};
  return path_.empty() ? name : path_ + u"\\" + name;
}

Value RegUtil::SetCurrHive(std::span<Value> arguments) {
  // The highest bit of a hive's number is set, so a caller with 32-bit integers passes a negative number.
  const double number = arguments[0].ToDouble();
  for (const Hive hive : {Hive::CurrentUser, Hive::LocalMachine}) {
    const auto wanted = static_cast<std::uint32_t>(hive);
    if (number != static_cast<std::int32_t>(wanted) && number != wanted) continue;
    hive_ = hive;
    path_.clear();
    return true;
  }
  return false;
}

Value RegUtil::SetCurrPath(std::span<Value> arguments) {
  String path = arguments[0].ToString();
  if (!hive_ || !RegistryStore::KeyExists(*hive_, path)) return false;
  path_ = std::move(path);
  return true;
}

Value RegUtil::AddKey(std::span<Value> arguments) {
  const auto path = Below(arguments[0].ToString());
  // If the cursor's key was deleted, it is not created again.
  if (!path || !RegistryStore::KeyExists(*hive_, path_)) return false;
  RegistryStore::CreateKey(*hive_, *path);
  return true;
}

Value RegUtil::DropToSubKey(std::span<Value> arguments) {
  auto path = Below(arguments[0].ToString());
  if (!path || !RegistryStore::KeyExists(*hive_, *path)) return false;
  path_ = std::move(*path);
  return true;
}

Value RegUtil::EnumKeys(std::span<Value> arguments) {
  Array& names = arguments[0].ToArray();
  names.clear();
  if (!hive_ || !RegistryStore::KeyExists(*hive_, path_)) return false;
  for (String& name : RegistryStore::SubKeys(*hive_, path_)) names.emplace_back(std::move(name));
  return true;
}

Value RegUtil::DeleteKey(std::span<Value> arguments) {
  const auto path = Below(arguments[0].ToString());
  if (!path) return false;
  RegistryStore::DeleteKey(*hive_, *path);
  return true;
}

Value RegUtil::GetValue(std::span<Value> arguments) {
  const RegValue holder = Required(arguments[0]);
  if (!hive_) return false;
  auto found = RegistryStore::Read(*hive_, path_, holder.ValueName());
  if (!found) return false;
  holder.SetDataType(found->Type);
  holder.SetValue(std::move(found->Content));
  return true;
}

Value RegUtil::AddOrUpdateValue(std::span<Value> arguments) {
  const RegValue holder = Required(arguments[0]);
  if (!hive_) return false;
  return RegistryStore::Write(*hive_, path_, holder.ValueName(), {holder.DataType(), holder.Value()});
}

}  // namespace TvGeneralServices
