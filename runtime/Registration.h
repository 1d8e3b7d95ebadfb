// Registration: what the machine-wide hive knows of components, under Software\Classes.
//
// Inside the run time alone. Every operation raises 57 where the registry does.
#pragma once

#include <optional>

#include "platform/Component.h"

namespace Runtime {

using namespace Platform;

// A class as it was registered. A plain file name lies in the library folder.
struct RegisteredClass {
  Guid Id;
  String File;
};

std::optional<RegisteredClass> FindClass(StringView programmaticName);
std::optional<RegisteredClass> FindClass(const Guid& classId);

// Writes all of a library's classes, the interfaces that it declares and its type library, in one
// transaction.
void WriteRegistration(const ComponentDescription& library, const String& file);

// Removes what WriteRegistration wrote and nothing else: a programmatic name that another class has taken
// over, and further versions of the type library, stay.
void RemoveRegistration(const ComponentDescription& library);

}  // namespace Runtime
