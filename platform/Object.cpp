#include "platform/Object.h"

#include <vector>

namespace Platform {

Object::~Object() = default;

Value Object::Get(StringView member) {
  Raise(FailureNumber::NoSuchMember, member);
}

void Object::Set(StringView member, Value) {
  Raise(FailureNumber::NoSuchMember, member);
}

Value Object::Call(StringView member, std::span<Value>) {
  Raise(FailureNumber::NoSuchMember, member);
}

Value CallWith(Object& object, StringView member, std::initializer_list<Value> arguments) {
  std::vector<Value> copies(arguments);
  return object.Call(member, copies);
}

}  // namespace Platform
