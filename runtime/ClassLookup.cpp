#include "runtime/ClassLookup.h"

#include <unistd.h>

#include <chrono>
#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "platform/Failure.h"
#include "runtime/Libraries.h"
#include "runtime/Registration.h"

namespace Runtime {
namespace {

struct KnownClass {
  std::string File;
  const ClassFactory* Factory;
  std::chrono::steady_clock::time_point LookedAt = std::chrono::steady_clock::now();

  // Within a RegistryScope the file is looked at only now and then, like the registry's.
  bool IsInPlace() {
    const auto now = std::chrono::steady_clock::now();
    if (RegistryScope::IsOpen() && now - LookedAt < RegistryScope::kLookInterval) return true;
    LookedAt = now;
    return access(File.c_str(), F_OK) == 0;
  }
};

class KnownClasses {
 public:
  // The cached factory; null if there is none, the registry has changed or the library's file is missing.
  const ClassFactory* Recall(const String& asked, const RegistryState& state) {
    const std::lock_guard guard(lock_);
    if (state != state_) classes_.clear();
    state_ = state;
    const auto known = classes_.find(asked);
    if (known == classes_.end() || !known->second.IsInPlace()) return nullptr;
    return known->second.Factory;
  }

  void Remember(const String& asked, const RegistryState& state, KnownClass found) {
    const std::lock_guard guard(lock_);
    if (state == state_) classes_.insert_or_assign(asked, std::move(found));
  }

 private:
  std::mutex lock_;
  RegistryState state_;
  std::map<String, KnownClass> classes_;
};

// The factories that were found within the scopes of a thread.
struct ScopedClasses {
  int Scopes = 0;
  std::vector<std::pair<String, const ClassFactory*>> Found;
};
thread_local ScopedClasses scoped;

template <class Key>
const ClassFactory& FindNow(const Key& key, const String& asked) {
  static auto& known = *new KnownClasses;
  try {
    const RegistryState state = RegistryAccess(Hive::LocalMachine)->State();
    if (const ClassFactory* factory = known.Recall(asked, state)) return *factory;
    const auto found = FindClass(key);
    if (!found)
      throw Failure(FailureNumber::CannotCreate, {},
                    u"it isn't registered; run \"tvmail init\", also after an update");
    const ClassFactory& factory = LoadClassFactory(found->File, found->Id);
    known.Remember(asked, state, {LocateLibrary(found->File), &factory});
    return factory;
  } catch (const Failure& failure) {
    Raise(FailureNumber::CannotCreate, asked + u": " + failure.Description());
  }
}

template <class Key>
const ClassFactory& Find(const Key& key, StringView asked) {
  if (scoped.Scopes == 0) return FindNow(key, String(asked));
  for (const auto& [name, factory] : scoped.Found) {
    if (name == asked) return *factory;
  }
  const ClassFactory& factory = FindNow(key, String(asked));
  scoped.Found.emplace_back(asked, &factory);
  return factory;
}

}  // namespace

ClassLookupScope::ClassLookupScope() {
  ++scoped.Scopes;
}

ClassLookupScope::~ClassLookupScope() {
  if (--scoped.Scopes == 0) scoped.Found.clear();
}

const ClassFactory& FindFactory(StringView programmaticName) {
  return Find(programmaticName, programmaticName);
}

const ClassFactory& FindFactory(const Guid& classId) {
  return Find(classId, ToText(classId));
}

}  // namespace Runtime
