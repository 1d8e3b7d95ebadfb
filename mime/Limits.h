// Limits: how large a mail may be that is read.
#pragma once

#include <cstddef>

namespace Mime {

// In bytes. One mail at a time is all that is kept in memory.
inline constexpr std::size_t kLargestMail = std::size_t{128} << 20;

}  // namespace Mime
