// Object: an object whose members are called by their names.
//
// Objects that are created by name, and those of the host, are of this type. An object is called on the
// thread that created it. Names of members are case-sensitive.
#pragma once

#include <initializer_list>
#include <span>

#include "platform/Failure.h"
#include "platform/Value.h"

namespace Platform {

class Object {
 public:
  Object() = default;
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;
  virtual ~Object();

  // Reads or writes a property. Raises 438 if there is no such property, and what the property raises.
  virtual Value Get(StringView member);
  virtual void Set(StringView member, Value value);

  // Calls a method, which may write into its arguments. The result is no value for a method without one.
  // Raises 438 if there is no such method, 450 for a wrong number of arguments, and what the method raises.
  virtual Value Call(StringView member, std::span<Value> arguments);
};

// Calls a method with copies of the arguments.
Value CallWith(Object& object, StringView member, std::initializer_list<Value> arguments);

// The base of an object whose members are listed in one table:
//
//   const ObjectWithMembers<Files>::Table& Files::Members() {
//     static const Table table = {
//         Method(u"CheckTVSFilePath", 1, &Files::CheckTVSFilePath),
//         Property(u"Value", &Files::GetValue, &Files::SetValue)};
//     return table;
//   }
template <class Derived>
class ObjectWithMembers : public Object {
 public:
  Value Get(StringView member) override {
    const Member* found = Find(member);
    return found && found->Getter ? (Self().*found->Getter)() : Object::Get(member);
  }

  void Set(StringView member, Value value) override {
    const Member* found = Find(member);
    if (!found || !found->Setter) return Object::Set(member, std::move(value));
    (Self().*found->Setter)(std::move(value));
  }

  Value Call(StringView member, std::span<Value> arguments) override {
    const Member* found = Find(member);
    if (!found || !found->Body) return Object::Call(member, arguments);
    if (arguments.size() != found->ArgumentCount) Raise(FailureNumber::WrongArguments, member);
    return (Self().*found->Body)(arguments);
  }

 protected:
  struct Member {
    StringView Name;
    std::size_t ArgumentCount = 0;
    Value (Derived::*Body)(std::span<Value>) = nullptr;
    Value (Derived::*Getter)() = nullptr;
    void (Derived::*Setter)(Value) = nullptr;
  };
  using Table = std::initializer_list<Member>;

  static Member Method(StringView name, std::size_t argumentCount, Value (Derived::*body)(std::span<Value>)) {
    return {name, argumentCount, body, nullptr, nullptr};
  }
  static Member Property(StringView name, Value (Derived::*getter)(),
                         void (Derived::*setter)(Value) = nullptr) {
    return {name, 0, nullptr, getter, setter};
  }

 private:
  Derived& Self() { return static_cast<Derived&>(*this); }
  static const Member* Find(StringView name) {
    for (const Member& member : Derived::Members()) {
      if (member.Name == name) return &member;
    }
    return nullptr;
  }
};

}  // namespace Platform
