#include "runtime/SystemLibrary.h"

#include <dlfcn.h>

#include "platform/Failure.h"
#include "platform/ProgramTexts.h"
#include "runtime/Texts.h"

namespace Runtime {

using Platform::FromUtf8;

SystemLibrary::SystemLibrary(const char* file, const char* package)
    : package_(package), library_(dlopen(file, RTLD_NOW | RTLD_LOCAL)) {
  if (!library_) Raise();
}

SystemLibrary::Address SystemLibrary::Find(const char* function) const {
  void* const place = dlsym(library_, function);
  if (!place) Raise();
  return {place};
}

void SystemLibrary::Raise() const {
  const char* const reason = dlerror();
  throw Platform::Failure(
      Platform::FailureNumber::DeviceFailed, u"Runtime.SystemLibrary",
      TextOf(Platform::TextNumber::kLibraryMissing, FromUtf8(reason ? reason : ""), FromUtf8(package_)));
}

}  // namespace Runtime
