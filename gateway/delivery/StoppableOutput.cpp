#include "gateway/delivery/StoppableOutput.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>

#include "gateway/sources/StopSignal.h"

namespace Gateway {
namespace {

// Waits until a pipe has room for PIPE_BUF bytes. False after a stop signal.
bool WaitForReader(int descriptor) {
  // A signal just before the wait doesn't interrupt it.
  constexpr int kMilliseconds = 200;
  for (;;) {
    pollfd output{descriptor, POLLOUT, 0};
    const int ready = poll(&output, 1, StopWanted() ? 0 : kMilliseconds);
    // Any other error of poll() is one of write() as well, which reports it.
    if (ready > 0 || (ready < 0 && errno != EINTR)) return true;
    if (ready == 0 && StopWanted()) return false;
  }
}

}  // namespace

int WriteUnlessStopped(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    if (!WaitForReader(descriptor)) return EINTR;
    const ssize_t count = write(descriptor, bytes.data(), std::min<std::size_t>(bytes.size(), PIPE_BUF));
    if (count >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno != EINTR && errno != EAGAIN) {
      return errno;
    }
  }
  return 0;
}

}  // namespace Gateway
