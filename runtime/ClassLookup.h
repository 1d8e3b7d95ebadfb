// ClassLookup: from a programmatic name or a class identity to the factory that creates its objects.
//
// What was found is remembered as long as nobody, in any process, changes the machine-wide hive. Any thread.
#pragma once

#include "platform/Component.h"

namespace Runtime {

using namespace Platform;

// Raises 429, with what was asked for and the reason, where the class isn't registered or its library can't
// be had; a library whose file was taken away can't, even if it is loaded.
const ClassFactory& FindFactory(StringView programmaticName);
const ClassFactory& FindFactory(const Guid& classId);

}  // namespace Runtime
