#include "gateway/service/Systemd.h"

#include <dlfcn.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <systemd/sd-daemon.h>
#define SD_JOURNAL_SUPPRESS_LOCATION
#include <systemd/sd-journal.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <ctime>

namespace Gateway {
namespace {

// The library is loaded when it is first needed, since tvmail deliver, which a mail server starts for each
// mail, would lose some milliseconds by loading it and what it needs.
template <typename Function>
Function* Entry(const char* name) {
  static void* const library = dlopen("libsystemd.so.0", RTLD_NOW | RTLD_LOCAL);
  return library ? reinterpret_cast<Function*>(dlsym(library, name)) : nullptr;
}

}  // namespace

void NotifyManager(const std::string& state) {
  if (!std::getenv("NOTIFY_SOCKET")) return;
  static auto* const notify = Entry<decltype(sd_notify)>("sd_notify");
  if (notify) notify(0, state.c_str());
}

std::string ReloadingState() {
  std::timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return "RELOADING=1\nMONOTONIC_USEC=" + std::to_string(now.tv_sec * 1'000'000 + now.tv_nsec / 1000);
}

std::optional<std::chrono::microseconds> WatchdogTime() {
  std::uint64_t microseconds = 0;
  auto* const enabled = Entry<decltype(sd_watchdog_enabled)>("sd_watchdog_enabled");
  if (!enabled || enabled(0, &microseconds) <= 0) return std::nullopt;
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
  static auto* const send = Entry<decltype(sd_journal_sendv)>("sd_journal_sendv");
  return send && send(pieces.data(), static_cast<int>(pieces.size())) == 0;
}

}  // namespace Gateway
