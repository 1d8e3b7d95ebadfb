// ObjectProxy: the base of the typed proxies for objects whose members are called by name.
//
// A proxy has one operation for each member, so that callers spell no names. It shares ownership of the
// object and is used on the thread that created the object. For every operation:
//   - it raises 91 if the proxy is empty, 438 if the object has no such member,
//     13 for a result of another type,
//     and what the member raises;
//   - its result is a copy that belongs to the caller.
#pragma once

#include <utility>

#include "platform/Object.h"

namespace Platform {

// An empty proxy means "no object".
class ObjectProxy {
 public:
  ObjectProxy() = default;
  explicit ObjectProxy(ObjectRef object) : object_(std::move(object)) {}

  explicit operator bool() const { return object_ != nullptr; }
  const ObjectRef& Reference() const { return object_; }

 protected:
  Value Get(StringView member) const { return Target().Get(member); }
  void Set(StringView member, Value value) const { Target().Set(member, std::move(value)); }

  template <class... Arguments>
  Value Call(StringView member, Arguments&&... arguments) const {
    return CallWith(Target(), member, {Value(std::forward<Arguments>(arguments))...});
  }

  // Calls a method that writes into its arguments.
  Value CallByReference(StringView member, std::span<Value> arguments) const {
    return Target().Call(member, arguments);
  }

 private:
  Object& Target() const {
    if (!object_) Raise(FailureNumber::ObjectNotSet);
    return *object_;
  }

  ObjectRef object_;
};

}  // namespace Platform
