// CheckedArithmetic: arithmetic of whole numbers that raises failure 6 on overflow.
//
// Pure; any thread.
#pragma once

#include <concepts>
#include <cstdint>

#include "platform/Failure.h"

namespace Platform {

// The number in the type T. Raises 6 if it doesn't fit.
template <std::integral T, std::integral From>
constexpr T Narrow(From number) {
  T result{};
  if (__builtin_add_overflow(number, From{0}, &result)) Raise(FailureNumber::Overflow);
  return result;
}

template <std::integral T>
constexpr T Add(T left, std::type_identity_t<T> right) {
  T result{};
  if (__builtin_add_overflow(left, right, &result)) Raise(FailureNumber::Overflow);
  return result;
}

template <std::integral T>
constexpr T Subtract(T left, std::type_identity_t<T> right) {
  T result{};
  if (__builtin_sub_overflow(left, right, &result)) Raise(FailureNumber::Overflow);
  return result;
}

template <std::integral T>
constexpr T Multiply(T left, std::type_identity_t<T> right) {
  T result{};
  if (__builtin_mul_overflow(left, right, &result)) Raise(FailureNumber::Overflow);
  return result;
}

}  // namespace Platform
