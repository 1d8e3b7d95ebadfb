#include "host/RegistryKey.h"

#include "platform/Services.h"

namespace Host {

std::optional<RegistryKey> RegistryKey::Open(Hive hive, StringView path) {
  const RegUtil cursor(Services().CreateByName(u"TvGeneralServices.RegUtil"));
  if (!cursor.SetCurrHive(hive) || !cursor.SetCurrPath(path)) return std::nullopt;
  return RegistryKey(cursor);
}

String RegistryKey::Text(StringView name) const {
  const RegValue value(Services().CreateByName(u"TvGeneralServices.RegValue"));
  value.SetValueName(name);
  if (!cursor_.GetValue(value)) return {};
  const Value content = value.Value();
  return content.IsString() ? content.ToString() : String();
}

}  // namespace Host
