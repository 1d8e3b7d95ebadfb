// RegistryValues: single values and keys of the registry, for whoever keeps something there.
#pragma once

#include "platform/contracts/GeneralServices.h"

namespace TvEmailServices {

using namespace Platform;

// Stores a string value at the position of registry. False without a report of its own where either object is
// missing or the value isn't taken; a raised failure is shown with message 10034.
bool SetRegStringValue(const RegUtil& registry, StringView name, const String& value);

// Reads a string value. True only for a string that isn't empty; the content of any other value that could be
// read stands in value all the same. On false, message 2057 with the name if report is on. A raised failure
// is shown whatever report says.
bool GetRegStringValue(const RegUtil& registry, StringView name, Value& value, bool report);

// True when the key is gone, also if it never was. A raised failure is shown with message 10050 if report is
// on.
bool DeleteRegKey(const String& parentPath, Hive hive, const String& keyName, bool report);

}  // namespace TvEmailServices
