#include "runtime/Libraries.h"

#include <dlfcn.h>
#include <unistd.h>

#include <map>
#include <mutex>
#include <utility>

#include "platform/Failure.h"
#include "runtime/Folders.h"

namespace Runtime {
namespace {

// The path that RegisterComponent is registering, where that library is loaded, and the failure text of the
// last registration.
thread_local std::string registering;
thread_local const void* registeringBase = nullptr;
thread_local String registrationFailure;

// The address at which the library of an address is loaded; null if no library has it.
const void* BaseOf(const void* address) {
  Dl_info library{};
  return dladdr(address, &library) != 0 ? library.dli_fbase : nullptr;
}

[[noreturn]] void RaiseCannotLoad(const std::string& path, const std::string& reason) {
  throw Failure(FailureNumber::CannotCreate, u"Runtime.Libraries",
                FromUtf8("the library " + path + " " + reason));
}

// The library's handle, or null and the reason in words.
void* Open(const std::string& path, std::string& reason) {
  if (path.front() != '/') {
    reason = "has a relative path; register it with its absolute path";
    return nullptr;
  }
  if (access(path.c_str(), F_OK) != 0) {
    reason = "is missing; install it again or run \"tvmail init\"";
    return nullptr;
  }
  void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!handle) {
    const char* error = dlerror();
    reason = std::string("can't be loaded: ") + (error ? error : "unknown reason");
  }
  return handle;
}

template <class Function>
Function* Export(void* handle, const std::string& path, const char* name) {
  auto* function = reinterpret_cast<Function*>(dlsym(handle, name));
  if (!function) RaiseCannotLoad(path, std::string("is no component: it lacks ") + name);
  return function;
}

// The handle of a library, which is loaded once and never closed.
void* Library(const std::string& path) {
  static std::mutex& lock = *new std::mutex;
  static auto& handles = *new std::map<std::string, void*>;
  {
    const std::lock_guard guard(lock);
    // A library whose file was removed counts as missing, although it is still loaded.
    if (const auto found = handles.find(path); found != handles.end() && access(path.c_str(), F_OK) == 0)
      return found->second;
  }
  // Without the lock, since the library's initialization may load other libraries.
  std::string reason;
  void* handle = Open(path, reason);
  if (!handle) RaiseCannotLoad(path, reason);
  const std::lock_guard guard(lock);
  handles[path] = handle;
  return handle;
}

void RunRegistration(const String& file, const char* exportName) {
  const std::string path = LocateLibrary(file);
  auto* function = Export<RegisterServerFunction>(Library(path), path, exportName);
  registering = path;
  registeringBase = BaseOf(reinterpret_cast<const void*>(function));
  registrationFailure.clear();
  const std::int32_t status = function();
  registering.clear();
  if (status == Status::Ok) return;
  throw Failure(FailureNumber::DeviceFailed, u"Runtime.RegisterComponent",
                FromUtf8(path + ": " + exportName + " failed: ") +
                    (registrationFailure.empty() ? String(u"no reason given") : registrationFailure));
}

}  // namespace

std::string LocateLibrary(const String& file) {
  const std::string path = ToUtf8(file);
  if (path.find('/') == std::string::npos) return LibraryPath() + "/" + path;
  return path.front() == '/' ? FullPath(path) : path;
}

String FileToRegister(const void* codeAddress) {
  // If a file has several names, the loader knows only the first one with which it was loaded, and that name
  // may be gone.
  const bool isRegistering = !registering.empty() && BaseOf(codeAddress) == registeringBase;
  const std::string path = isRegistering ? registering : FileOfAddress(codeAddress);
  const bool ours = FolderOfPath(path) == LibraryPath();
  return FromUtf8(ours ? path.substr(LibraryPath().size() + 1) : path);
}

std::int32_t RegistrationStatus(const std::function<void()>& work) {
  try {
    work();
    return Status::Ok;
  } catch (...) {
    registrationFailure = CurrentFailure().Description();
    return Status::RegistrationFailed;
  }
}

const ClassFactory& LoadClassFactory(const String& file, const Guid& classId) {
  const std::string path = LocateLibrary(file);
  auto* getClassObject = Export<GetClassObjectFunction>(Library(path), path, "DllGetClassObject");
  const void* factory = nullptr;
  if (getClassObject(classId, ClassFactoryInterface, &factory) != Status::Ok || !factory)
    RaiseCannotLoad(path, "lacks the class " + ToUtf8(ToText(classId)));
  return *static_cast<const ClassFactory*>(factory);
}

void RegisterComponent(const String& file) {
  RunRegistration(file, "DllRegisterServer");
}

void UnregisterComponent(const String& file) {
  RunRegistration(file, "DllUnregisterServer");
}

std::shared_ptr<FormsToolkit> LoadToolkit(const String& file, String& reason) {
  const std::string path = LocateLibrary(file);
  std::string why;
  void* handle = Open(path, why);
  if (!handle) {
    reason = FromUtf8(path + " " + why);
    return nullptr;
  }
  auto* create = reinterpret_cast<FormsToolkit* (*)(std::string&)>(dlsym(handle, "CreateFormsToolkit"));
  FormsToolkit* toolkit = create ? create(why) : nullptr;
  if (!create) why = path + " is no forms toolkit; name another library";
  if (!toolkit) reason = FromUtf8(why);
  return std::shared_ptr<FormsToolkit>(toolkit);
}

}  // namespace Runtime
