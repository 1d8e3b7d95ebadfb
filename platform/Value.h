// Value: the type of all arguments and results of objects known by name.
//
// A value is used on one thread at a time and owns its content. Conversions raise 13 for content that can't
// be converted, 6 for a number that doesn't fit. The empty value ("no value") converts to 0, false, the empty
// string and the null reference.
#pragma once

#include <cstdint>
#include <memory>
#include <variant>
#include <vector>

#include "platform/Boolean.h"
#include "platform/Text.h"

namespace Platform {

class Object;
using ObjectRef = std::shared_ptr<Object>;  // null: "nothing"

class Value;
using Array = std::vector<Value>;
using Bytes = std::vector<std::uint8_t>;

class Value {
 public:
  Value() = default;
  Value(Boolean value) : content_(value) {}
  template <std::same_as<bool> T>
  Value(T value) : content_(Boolean(value)) {}
  Value(std::int16_t value) : content_(value) {}
  Value(std::int32_t value) : content_(value) {}
  Value(double value) : content_(value) {}
  Value(String value) : content_(std::move(value)) {}
  Value(StringView value) : content_(String(value)) {}
  Value(const char16_t* value) : content_(String(value)) {}
  Value(ObjectRef value) : content_(std::move(value)) {}
  Value(Array value) : content_(std::move(value)) {}
  Value(Bytes value) : content_(std::move(value)) {}
  Value(const Value&) = default;
  Value(Value&&) = default;
  Value& operator=(const Value&) = default;
  Value& operator=(Value&&) = default;
  ~Value();

  bool IsEmpty() const { return std::holds_alternative<std::monostate>(content_); }
  bool IsString() const { return std::holds_alternative<String>(content_); }
  bool IsObject() const { return std::holds_alternative<ObjectRef>(content_); }
  bool IsArray() const { return std::holds_alternative<Array>(content_); }
  bool IsBytes() const { return std::holds_alternative<Bytes>(content_); }

  // From numbers and from texts of numbers. ToBool also from "True" and "False" in any case.
  bool ToBool() const;
  std::int16_t ToInt16() const;
  std::int32_t ToInt32() const;
  double ToDouble() const;

  // A number in decimal, a truth value as "True" or "False". Raises 13 for objects, arrays and bytes.
  String ToString() const;

  // The object reference, which may be null. Raises 13 for anything but a reference and no value.
  ObjectRef ToObject() const;

  // The array itself. Raises 13 for anything else.
  const Array& ToArray() const;
  Array& ToArray();

  // From bytes, from an array of numbers 0 to 255, or from a string: two bytes a character, the low one
  // first.
  Bytes ToBytes() const;

 private:
  std::variant<std::monostate, Boolean, std::int16_t, std::int32_t, double, String, ObjectRef, Array, Bytes>
      content_;
};

}  // namespace Platform
