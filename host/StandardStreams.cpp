#include "host/StandardStreams.h"

#include <fcntl.h>
#include <unistd.h>

#include <initializer_list>

namespace Host {

void HoldStandardStreams() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(stream, F_GETFD) >= 0) continue;
    // open() returns the lowest free descriptor, which is this one.
    static_cast<void>(open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY));
  }
}

}  // namespace Host
