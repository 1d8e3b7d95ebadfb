// Boolean: the 16-bit truth word of everything that crosses the host, a form or a sibling component.
#pragma once

#include <concepts>
#include <cstdint>

namespace Platform {

// True is -1 and False is 0. A word that came from outside may hold anything; all but 0 counts as true.
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
