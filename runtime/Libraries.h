// Libraries: loads component and toolkit libraries and registers components. Libraries are never unloaded.
//
// A file name without a folder is a file in LibraryFolder; a name with a folder must be an absolute path. Any
// thread.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/Component.h"
#include "platform/Forms/FormsToolkit.h"

namespace Runtime {

using namespace Platform;

// The factory of a class, from the library's DllGetClassObject. It is valid until the process ends. Raises
// 429, with the reason, if the file is missing, is no component, or lacks the class.
const ClassFactory& LoadClassFactory(const String& file, const Guid& classId);

// Calls DllRegisterServer or DllUnregisterServer of a library. Raises 429 if the library can't be loaded, 57,
// with the reason, if the registration fails.
void RegisterComponent(const String& file);
void UnregisterComponent(const String& file);

// A new toolkit of a plug-in: a library that exports `Platform::FormsToolkit* CreateFormsToolkit(std::string&
// reason)`. Null, with the reason in words, if the library can't be loaded or the plug-in gives no toolkit.
std::shared_ptr<FormsToolkit> LoadToolkit(const String& file, String& reason);

// For the run time alone:

// The full path of a library file. A relative path with a folder is returned unchanged; loading it fails.
std::string LocateLibrary(const String& file);

// The file name under which to register the library that holds the address: without the folder if that is
// LibraryFolder, otherwise the full path. During RegisterComponent it is the path that RegisterComponent was
// given.
String FileToRegister(const void* codeAddress);

// Runs the work of a registration export. Returns Status::Ok, or Status::RegistrationFailed after any
// exception, whose text RegisterComponent on the same thread puts into its own failure.
std::int32_t RegistrationStatus(const std::function<void()>& work);

}  // namespace Runtime
