#include "gateway/sources/EtpanLibrary.h"

#include <dlfcn.h>

#include "gateway/sources/SourceFailure.h"
#include "platform/ProgramTexts.h"

namespace Gateway {
namespace {

constexpr const char* kFile = "libetpan.so.20";

}  // namespace

EtpanLibrary::Address EtpanLibrary::Find(const char* name) {
  static void* const library = dlopen(kFile, RTLD_NOW | RTLD_LOCAL);
  void* const place = library ? dlsym(library, name) : nullptr;
  if (place) return {place};
  const char* const reason = dlerror();
  RaiseSource(Platform::TextNumber::kEtpanMissing, kFile, reason ? reason : "");
}

const EtpanLibrary& EtpanLibrary::Get() {
  static const EtpanLibrary library;
  return library;
}

}  // namespace Gateway
