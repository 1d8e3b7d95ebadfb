#include "gateway/sources/HostLookup.h"

#include <netdb.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <memory>
#include <system_error>
#include <thread>

#include "gateway/sources/SourceFailure.h"
#include "platform/ProgramTexts.h"
#include "runtime/SystemReason.h"

namespace Gateway {
namespace {

namespace TextNumber = Platform::TextNumber;

// Shared with the resolver's thread, which may outlive the call.
struct Lookup {
  std::string Host;
  std::string Port;
  Runtime::Descriptor Finished{eventfd(0, EFD_CLOEXEC)};
  int Error = 0;        // of getaddrinfo
  int SystemError = 0;  // its errno
  std::vector<HostAddress> Found;
  std::atomic<bool> Complete = false;  // then the other thread no longer changes the members above
};

void Resolve(Lookup& lookup) {
  addrinfo wanted{};
  wanted.ai_socktype = SOCK_STREAM;
  wanted.ai_flags = AI_NUMERICSERV;
  addrinfo* list = nullptr;
  lookup.Error = getaddrinfo(lookup.Host.c_str(), lookup.Port.c_str(), &wanted, &list);
  lookup.SystemError = errno;
  for (const addrinfo* one = list; lookup.Error == 0 && one; one = one->ai_next) {
    HostAddress address;
    address.Length = one->ai_addrlen;
    std::memcpy(&address.Address, one->ai_addr, one->ai_addrlen);
    lookup.Found.push_back(address);
  }
  if (list) freeaddrinfo(list);
  lookup.Complete = true;
}

}  // namespace

std::vector<HostAddress> LookUpHost(const std::string& host, int port, const Interruption& interruption,
                                    std::chrono::milliseconds timeout) {
  const auto lookup = std::make_shared<Lookup>();
  lookup->Host = host;
  lookup->Port = std::to_string(port);
  try {
    std::thread([lookup] {
      Resolve(*lookup);
      eventfd_write(lookup->Finished.Number(), 1);
    }).detach();
  } catch (const std::system_error& error) {
    RaiseSource(TextNumber::kSourceHostUnknown, host, error.code().message());
  }
  if (!interruption.Wait(lookup->Finished.Number(), POLLIN, timeout) || !lookup->Complete) {
    if (interruption.IsSet()) RaiseSource(TextNumber::kSourceInterrupted);
    RaiseSource(TextNumber::kSourceHostUnknown, host, Runtime::SystemReason(ETIMEDOUT));
  }
  if (lookup->Found.empty())
    RaiseSource(TextNumber::kSourceHostUnknown, host,
                lookup->Error == EAI_SYSTEM ? Runtime::SystemReason(lookup->SystemError)
                                            : gai_strerror(lookup->Error));
  return std::move(lookup->Found);
}

}  // namespace Gateway
