// modCfgIn: the word that carries the inbound dialog's outcome from one call to the next.
//
// It exists once in each thread and is shared by all handler objects of that thread. Nothing puts it back to
// 0 but the creation of a handler object.
#pragma once

#include <cstdint>

namespace TvEmailServices {

inline constexpr std::int32_t ConfigureStateNone = 0;      // no outcome yet
inline constexpr std::int32_t ConfigureStateAccepted = 1;  // the entries passed the check
inline constexpr std::int32_t ConfigureStateKept = 2;  // success, and the handler object keeps what it has
inline constexpr std::int32_t ConfigureStateCancelled = 3;  // cancelled without an earlier success

std::int32_t GetConfigureState();
void SetConfigureState(std::int32_t state);

}  // namespace TvEmailServices
