#include "gateway/sources/Interruption.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "platform/Failure.h"
#include "runtime/SystemReason.h"

namespace Gateway {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

// Returns true if the first of the two descriptors is ready, and false at once if only the second one is.
bool PollBoth(int descriptor, short events, int event, milliseconds longest) {
  const auto end = steady_clock::now() + longest;
  for (;;) {
    pollfd both[] = {{descriptor, events, 0}, {event, POLLIN, 0}};
    const auto left = std::chrono::ceil<milliseconds>(end - steady_clock::now());
    const int wait = static_cast<int>(std::clamp(left, milliseconds(0), milliseconds(1 << 30)).count());
    const int ready = poll(both, 2, wait);
    if (ready > 0) return both[0].revents != 0;
    if (ready == 0 || errno != EINTR) return false;
  }
}

}  // namespace

Interruption::Interruption() : event_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  if (!event_)
    Platform::Raise(Platform::FailureNumber::DeviceFailed, Platform::FromUtf8(Runtime::SystemReason(errno)));
}

void Interruption::Set() {
  set_ = true;
  const std::uint64_t one = 1;
  [[maybe_unused]] const auto written = write(event_.Number(), &one, sizeof one);
}

bool Interruption::Wait(int descriptor, short events, milliseconds longest) const {
  return PollBoth(descriptor, events, event_.Number(), longest);
}

bool Interruption::WaitUninterrupted(int descriptor, short events, milliseconds longest) {
  return PollBoth(descriptor, events, -1, longest);
}

}  // namespace Gateway
