// Libraries: the loaded libraries, and what passes between RegisterComponent and the export that it calls.
//
// Inside the run time alone. Any thread.
#pragma once

#include <functional>
#include <string>

#include "platform/Component.h"

namespace Runtime {

using namespace Platform;

// The full path of a library file; one without a folder lies in the library folder, whatever the loader would
// search besides. A path from the present folder on is given back as it is, and never loaded.
std::string LocateLibrary(const String& file);

// The name under which the library that holds the address is to be registered: the plain name of a file in
// the library folder, otherwise the full path. While RegisterComponent is at work, the path that it was
// given.
String FileToRegister(const void* codeAddress);

// Runs the work and gives Ok, or RegistrationFailed for any failure, whose description is kept for
// RegisterComponent on the same thread.
std::int32_t TellingWhy(const std::function<void()>& work);

}  // namespace Runtime
