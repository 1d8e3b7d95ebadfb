// The run time's side of a component's four exports.
#include <map>
#include <mutex>
#include <utility>

#include "platform/Object.h"
#include "runtime/Libraries.h"
#include "runtime/Registration.h"

namespace Runtime {
namespace {

class Factory : public ClassFactory {
 public:
  Factory(const ComponentDescription& library, const ClassDescription& theClass)
      : library_(library), class_(theClass) {}

  ObjectRef CreateInstance() const override {
    ObjectRef object = class_.Create();
    if (!object) Raise(FailureNumber::CannotCreate, class_.Name);
    return object;
  }

  const ComponentDescription& Library() const override { return library_; }
  const ClassDescription& Class() const override { return class_; }

 private:
  const ComponentDescription& library_;
  const ClassDescription& class_;
};

// Factories are never deleted, since libraries are never unloaded.
const ClassFactory& FactoryOf(const ComponentDescription& library, const ClassDescription& theClass) {
  static std::mutex& lock = *new std::mutex;
  static auto& factories = *new std::map<const ClassDescription*, Factory>;
  const std::lock_guard guard(lock);
  return factories.try_emplace(&theClass, library, theClass).first->second;
}

}  // namespace
}  // namespace Runtime

namespace Platform::ComponentRuntime {

using namespace Runtime;

std::int32_t CanUnloadNow(const ComponentDescription& library) {
  return !library.LiveObjects || *library.LiveObjects == 0 ? Status::Ok : Status::No;
}

std::int32_t GetClassObject(const ComponentDescription& library, const Guid& classId, const Guid& interfaceId,
                            const void** object) {
  *object = nullptr;
  if (interfaceId != ClassFactoryInterface) return Status::NoInterface;
  for (const ClassDescription& offered : library.Classes) {
    if (offered.Id != classId) continue;
    const ClassFactory& factory = FactoryOf(library, offered);
    *object = &factory;
    return Status::Ok;
  }
  return Status::NoClass;
}

std::int32_t RegisterServer(const ComponentDescription& library, const void* codeAddress) {
  return RegistrationStatus([&] { WriteRegistration(library, FileToRegister(codeAddress)); });
}

std::int32_t UnregisterServer(const ComponentDescription& library) {
  return RegistrationStatus([&] { RemoveRegistration(library); });
}

}  // namespace Platform::ComponentRuntime
