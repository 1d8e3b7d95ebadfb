// Boolean: the 16-bit truth value at the interfaces of the host, the forms and the sibling components.
#pragma once

#include <concepts>
#include <cstdint>

namespace Platform {

// True is -1 and False is 0. A word from outside may hold any number; each but 0 is true.
struct Boolean {
  std::int16_t Word = 0;

  constexpr Boolean() = default;
  template <std::same_as<bool> T>
  constexpr Boolean(T value) : Word(value ? -1 : 0) {}
  constexpr explicit operator bool() const { return Word != 0; }
  friend constexpr bool operator==(Boolean, Boolean) = default;
};

inline constexpr Boolean True{true};
inline constexpr Boolean False{false};

}  // namespace Platform
