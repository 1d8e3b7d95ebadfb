// ObjectProxy: what the typed windows in front of objects known by name are made of.
#pragma once

#include <utility>

#include "platform/Object.h"

namespace Platform {

// Holds the reference and passes calls on. An empty window stands for "nothing"; a call through it raises 91.
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
