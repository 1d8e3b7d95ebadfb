// PropertyObject: an object with read-only properties.
#pragma once

#include <map>
#include <memory>
#include <utility>

#include "platform/Object.h"

namespace Platform {

class PropertyObject : public Object {
 public:
  // The names must be literals.
  using Properties = std::map<StringView, Value>;

  static ObjectRef Make(Properties properties) {
    return std::make_shared<PropertyObject>(std::move(properties));
  }
  explicit PropertyObject(Properties properties) : properties_(std::move(properties)) {}

  // Raises 438 for any other member.
  Value Get(StringView member) override {
    const auto found = properties_.find(member);
    return found == properties_.end() ? Object::Get(member) : found->second;
  }

 private:
  Properties properties_;
};

}  // namespace Platform
