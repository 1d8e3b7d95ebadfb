#include "desktop/DisplayProbe.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>

#include "platform/Text.h"
#include "runtime/Process.h"

extern char** environ;

namespace Desktop {
namespace {

constexpr auto kProbeTimeout = std::chrono::seconds(10);

// Reads what the probe says until it ends or the patience does; false in the latter case.
bool ReadAll(int pipe, std::string& text) {
  const auto until = std::chrono::steady_clock::now() + kProbeTimeout;
  char buffer[1024];
  for (;;) {
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(until - std::chrono::steady_clock::now());
    pollfd ready{pipe, POLLIN, 0};
    if (left.count() <= 0 || poll(&ready, 1, static_cast<int>(left.count())) <= 0) return false;
    const ssize_t count = read(pipe, buffer, sizeof buffer);
    if (count <= 0) return true;
    text.append(buffer, static_cast<std::size_t>(count));
  }
}

}  // namespace

bool CanOpenDisplay(std::string& reason) {
  const auto unset = [](const char* name) { return !getenv(name) || !*getenv(name); };
  if (unset("DISPLAY") && unset("WAYLAND_DISPLAY") && unset("QT_QPA_PLATFORM")) {
    reason = "there is no display: neither DISPLAY nor WAYLAND_DISPLAY is set";
    return false;
  }
  const std::string program = Platform::ToUtf8(Runtime::LibraryFolder()) + "/talvane-display-probe";
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) {
    reason = "no pipe for the display probe";
    return false;
  }
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDERR_FILENO);
  std::string argument = program;
  char* arguments[] = {argument.data(), nullptr};
  pid_t child = 0;
  const int started = posix_spawn(&child, program.c_str(), &actions, nullptr, arguments, environ);
  posix_spawn_file_actions_destroy(&actions);
  close(ends[1]);
  std::string said;
  bool good = false;
  if (started != 0) {
    said = program + " can't be run";
  } else {
    if (!ReadAll(ends[0], said)) kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    good = WIFEXITED(status) && WEXITSTATUS(status) == 0;
  }
  close(ends[0]);
  if (!good) reason = said.empty() ? "no display can be opened" : said.substr(0, said.find('\n'));
  return good;
}

}  // namespace Desktop
