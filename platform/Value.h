// Value: the tagged value in which everything that is called by name takes and gives its arguments.
//
// A value belongs to one thread at a time. Every conversion raises 13 where the content can't be taken so,
// and 6 where a number doesn't fit. No value counts as 0, false and the empty string, as an unset value does
// everywhere in this field.
#pragma once

#include <cstdint>
#include <memory>
#include <variant>
#include <vector>

#include "platform/Boolean.h"
#include "platform/Text.h"

namespace Platform {

class Object;
using ObjectRef = std::shared_ptr<Object>;  // an empty reference is "nothing"

class Value;
using Array = std::vector<Value>;  // element 0 is position 1 of those who count from 1
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

  // Numbers and their texts; a text also as "True" and "False" in any case.
  bool ToBool() const;
  std::int16_t ToInt16() const;
  std::int32_t ToInt32() const;
  double ToDouble() const;

  // A number in decimal, a truth value as "True" or "False".
  String ToString() const;

  // An object reference, which may be nothing. No value gives nothing.
  ObjectRef ToObject() const;

  // The array itself. Raises 13 for anything else.
  const Array& ToArray() const;
  Array& ToArray();

  // Bytes as they are, an array of numbers from 0 to 255, or the two bytes (low one first) of each character
  // of a string. Raises 13 for anything else.
  Bytes ToBytes() const;

 private:
  std::variant<std::monostate, Boolean, std::int16_t, std::int32_t, double, String, ObjectRef, Array, Bytes>
      content_;
};

}  // namespace Platform
