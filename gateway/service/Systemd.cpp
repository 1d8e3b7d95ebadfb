#include "gateway/service/Systemd.h"

#include <sys/stat.h>
#include <sys/uio.h>
#include <systemd/sd-daemon.h>
#include <systemd/sd-journal.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <ctime>

namespace Gateway {

void NotifyManager(const std::string& state) {
  sd_notify(0, state.c_str());
}

std::string ReloadingState() {
  std::timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return "RELOADING=1\nMONOTONIC_USEC=" + std::to_string(now.tv_sec * 1'000'000 + now.tv_nsec / 1000);
}

std::optional<std::chrono::microseconds> WatchdogTime() {
  std::uint64_t microseconds = 0;
  if (sd_watchdog_enabled(0, &microseconds) <= 0) return std::nullopt;
  return std::chrono::microseconds(microseconds);
}

bool ErrorsGoToJournal() {
  const char* stream = std::getenv("JOURNAL_STREAM");
  struct stat status {};
  return stream && fstat(STDERR_FILENO, &status) == 0 &&
         std::to_string(status.st_dev) + ":" + std::to_string(status.st_ino) == stream;
}

bool SendToJournal(const std::vector<std::string>& fields) {
  std::vector<iovec> pieces;
  for (const std::string& field : fields) {
    std::string& text = const_cast<std::string&>(field);  // iovec is for reading, too
    pieces.push_back({text.data(), text.size()});
  }
  return sd_journal_sendv(pieces.data(), static_cast<int>(pieces.size())) == 0;
}

}  // namespace Gateway
