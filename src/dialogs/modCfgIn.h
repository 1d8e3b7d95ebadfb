// modCfgIn: the inbound dialog's last result.
//
// There is one in each thread, for all handler objects of that thread. Only the creation of a handler object
// resets it to 0.
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
