// ClassLookup: finds the factory of a class by its programmatic name or its class identifier.
//
// Results are cached until any process changes the machine-wide hive. Any thread.
#pragma once

#include "platform/Component.h"
#include "runtime/RegistryFile.h"

namespace Runtime {

using namespace Platform;

// The factory, which is valid until the process ends. Raises 429, with the name or identifier and the reason,
// if the class isn't registered, or its library can't be loaded or its file is missing.
const ClassFactory& FindFactory(StringView programmaticName);
const ClassFactory& FindFactory(const Guid& classId);

// While one exists, FindFactory on its thread checks neither the registry nor the library's file for a class
// that it has found once. Changes take effect when the outermost scope ends, but a file that was removed may
// be noticed up to RegistryScope::kLookInterval later. It is a RegistryScope, too. For one piece of work,
// such as one message, that creates the same classes repeatedly.
class ClassLookupScope {
 public:
  ClassLookupScope();
  ClassLookupScope(const ClassLookupScope&) = delete;
  ClassLookupScope& operator=(const ClassLookupScope&) = delete;
  ~ClassLookupScope();

 private:
  RegistryScope registry_;
};

}  // namespace Runtime
