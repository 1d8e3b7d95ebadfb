// ArrayMembers: members of structures that cross an object's call as arrays of values.
#pragma once

#include <optional>
#include <vector>

#include "platform/Failure.h"
#include "platform/Value.h"

namespace Platform {

// Raises 9 if there is no such element.
inline const Value& ElementOf(const Array& array, std::size_t index) {
  if (index >= array.size()) Raise(FailureNumber::Subscript);
  return array[index];
}

// An array with the value that make gives for each element.
template <class Element, class Make>
Array ArrayOf(const std::vector<Element>& elements, Make make) {
  Array array;
  array.reserve(elements.size());
  for (const Element& element : elements) array.push_back(make(element));
  return array;
}

// What read gives for each value of an array.
template <class Read>
auto VectorOf(const Value& value, Read read) {
  std::vector<decltype(read(value))> elements;
  elements.reserve(value.ToArray().size());
  for (const Value& element : value.ToArray()) elements.push_back(read(element));
  return elements;
}

// An empty value stands for nothing.
template <class Member>
Value OptionalValue(const std::optional<Member>& member) {
  return member ? Value(*member) : Value();
}

template <class Read>
auto ReadOptional(const Array& array, std::size_t index, Read read) {
  const Value& value = ElementOf(array, index);
  return value.IsEmpty() ? std::nullopt : std::optional(read(value));
}

}  // namespace Platform
