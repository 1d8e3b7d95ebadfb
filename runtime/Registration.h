// Registration: the components in the machine-wide hive, under Software\Classes.
//
// Inside the run time alone. Every operation raises 57 if the registry can't be read or written. Any thread.
#pragma once

#include <optional>

#include "platform/Component.h"

namespace Runtime {

using namespace Platform;

struct RegisteredClass {
  Guid Id;
  String File;  // as LocateLibrary takes it
};

// Nothing if the class isn't registered.
std::optional<RegisteredClass> FindClass(StringView programmaticName);
std::optional<RegisteredClass> FindClass(const Guid& classId);

// Writes the library's classes, the interfaces that it declares and its type library, in one transaction.
void WriteRegistration(const ComponentDescription& library, const String& file);

// Removes what WriteRegistration wrote, in one transaction. A programmatic name that now belongs to another
// class, and other versions of the type library, remain.
void RemoveRegistration(const ComponentDescription& library);

}  // namespace Runtime
