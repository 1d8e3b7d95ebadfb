// ObjectProxy: the base of the typed proxies for objects that are known by the names of their members.
//
// A proxy has one operation for each member, so that no caller spells a member's name. It holds a shared
// reference and is called on the thread that created the object. What an operation's comment doesn't say:
//   - it raises 91 if the proxy is empty, 438 if the object lacks the member, 13 if a result is of another
//     type than the operation gives, and whatever the member itself raises;
//   - it gives a new value, which belongs to the caller.
#pragma once

#include <utility>

#include "platform/Object.h"

namespace Platform {

// An empty proxy stands for "no object".
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

  // For methods that write into their arguments.
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
