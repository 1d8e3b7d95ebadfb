// HostLookup: the addresses of a host.
#pragma once

#include <sys/socket.h>

#include <chrono>
#include <string>
#include <vector>

#include "gateway/sources/Interruption.h"

namespace Gateway {

struct HostAddress {
  sockaddr_storage Address{};
  socklen_t Length = 0;
};

// In the order in which they are to be tried; at least one. The system's resolver can't be interrupted, so it
// runs on a thread of its own, which isn't waited for after the time or an interruption. Raises 57.
std::vector<HostAddress> LookUpHost(const std::string& host, int port, const Interruption& interruption,
                                    std::chrono::milliseconds timeout);

}  // namespace Gateway
