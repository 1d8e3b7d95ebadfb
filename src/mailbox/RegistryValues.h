// RegistryValues: reads and writes single values of the registry, and deletes keys. No function raises a
// failure.
#pragma once

#include "platform/contracts/GeneralServices.h"

namespace TvEmailServices {

using namespace Platform;

// Writes a string value to the key of the cursor. False without a message if there is no registry or the
// value isn't written; a raised failure is shown with kValueNotWritten.
bool SetRegStringValue(const RegUtil& registry, StringView name, const String& value);

// Reads a value. True only for a string that isn't empty; value is also set to other content that could be
// read. Shows kValueMissing with the name on false if report is true, and a raised failure in any case.
bool GetRegStringValue(const RegUtil& registry, StringView name, Value& value, bool report);

// Deletes a key. True also if there was none. A raised failure is shown with kKeyNotDeleted if report is
// true.
bool DeleteRegKey(StringView parentPath, Hive hive, const String& keyName, bool report);

}  // namespace TvEmailServices
