#include "src/mailbox/RegistryValues.h"

#include "platform/StoredNames.h"
#include "src/services/modComponents.h"
#include "src/services/modMain.h"

namespace TvEmailServices {

bool SetRegStringValue(const RegUtil& registry, StringView name, const String& value) try {
  const RegValue holder = GetRegValue(true);
  if (!holder) return false;
  holder.SetDataType(RegValue::StringType);
  if (!registry) return false;
  holder.SetValueName(name);
  holder.SetValue(value);
  return registry.AddOrUpdateValue(holder);
} catch (...) {
  return ReportFailure(TextNumber::kValueNotWritten);
}

bool GetRegStringValue(const RegUtil& registry, StringView name, Value& value, bool report) try {
  bool read = false;
  const RegValue holder = GetRegValue(true);
  if (registry && holder) {
    holder.SetValueName(name);
    read = registry.GetValue(holder);
    if (read) value = holder.Value();
  }
  const bool found = read && value.IsString() && !value.ToString().empty();
  if (!found && report) ShowResourceMessage(TextNumber::kValueMissing, String(u" ").append(name));
  return found;
} catch (...) {
  return ReportFailure();
}

bool DeleteRegKey(StringView parentPath, Hive hive, const String& keyName, bool report) try {
  if (!GetRegUtil(hive, String(parentPath).append(u"\\").append(keyName), false)) return true;
  const RegUtil parent = GetRegUtil(hive, parentPath, report);
  return parent && parent.DeleteKey(keyName);
} catch (...) {
  if (report) ShowErrorMessageV(CurrentFailure(), TextNumber::kKeyNotDeleted, {keyName});
  return false;
}

}  // namespace TvEmailServices
