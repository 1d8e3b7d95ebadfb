#include "desktop/DisplayProbe.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>

#include "desktop/DesktopTexts.h"
#include "platform/Text.h"
#include "runtime/Folders.h"

extern char** environ;

namespace Desktop {
namespace {

constexpr auto kProbeTimeout = std::chrono::seconds(10);

// Reads the probe's standard error until it ends. False after kProbeTimeout.
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

// The text of the number with the detail; the detail alone where there is no catalogue.
std::string Reason(std::int32_t number, const std::string& detail) {
  const Platform::String text = DesktopText(number, {Platform::Value(Platform::FromUtf8(detail))});
  return text.empty() ? detail : Platform::ToUtf8(text);
}

}  // namespace

bool CanOpenDisplay(std::string& reason) {
  const auto unset = [](const char* name) {
    const char* value = getenv(name);
    return !value || !*value;
  };
  if (unset("DISPLAY") && unset("WAYLAND_DISPLAY") && unset("QT_QPA_PLATFORM")) {
    reason = Reason(TextNumber::kNoDisplay, "DISPLAY is not set");
    return false;
  }
  const std::string program = Platform::ToUtf8(Runtime::LibraryFolder()) + "/talvane-display-probe";
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) {
    reason = Reason(TextNumber::kProbeNotRun, program);
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
  bool good = false;
  if (started != 0) {
    reason = Reason(TextNumber::kProbeNotRun, program);
  } else {
    std::string errors;
    if (!ReadAll(ends[0], errors)) kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    good = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    if (errors.empty()) errors = "DISPLAY";
    if (!good) reason = Reason(TextNumber::kDisplayRefused, errors.substr(0, errors.find('\n')));
  }
  close(ends[0]);
  return good;
}

}  // namespace Desktop
