#include "gateway/notices/CommandRun.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/epoll.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>

extern "C" {  // which this header lacks in glibc 2.36
#include <sys/pidfd.h>
}

#include "platform/Failure.h"
#include "runtime/SystemReason.h"

namespace Gateway {
namespace {

using Clock = std::chrono::steady_clock;
using Runtime::Descriptor;
using std::chrono::milliseconds;

constexpr std::size_t kKeptOutput = 2000;  // bytes

[[noreturn]] void Raise(int error) {
  throw Platform::Failure(Platform::FailureNumber::DeviceFailed, u"Gateway.MailTransport",
                          Platform::FromUtf8(Runtime::SystemReason(error)));
}

// The same file, with a number above those of standard input and output.
Descriptor Above(Descriptor file) {
  if (!file) Raise(errno);
  Descriptor above(fcntl(file.Number(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
  if (!above) Raise(errno);
  return above;
}

// A file in memory, so that a program that doesn't read isn't waited for.
Descriptor FileOf(std::string_view input) {
  Descriptor file = Above(Descriptor(memfd_create("mail", MFD_CLOEXEC)));
  while (!input.empty()) {
    const ssize_t count = write(file.Number(), input.data(), input.size());
    if (count < 0 && errno != EINTR) Raise(errno);
    if (count > 0) input.remove_prefix(static_cast<std::size_t>(count));
  }
  if (lseek(file.Number(), 0, SEEK_SET) != 0) Raise(errno);
  return file;
}

// This process's, without what a service manager tells this process alone.
std::vector<std::string> Environment() {
  constexpr std::string_view kOwn[] = {"PATH=", "NOTIFY_SOCKET=", "WATCHDOG_", "LISTEN_"};
  const char* path = std::getenv("PATH");
  std::vector<std::string> environment = {std::string("PATH=") +
                                          (path && *path ? path : "/usr/local/bin:/usr/bin:/bin") +
                                          ":/usr/local/sbin:/usr/sbin:/sbin:/usr/lib"};
  for (char** entry = environ; *entry; ++entry) {
    const std::string_view variable = *entry;
    bool own = false;
    for (const std::string_view name : kOwn) own = own || variable.starts_with(name);
    if (!own) environment.emplace_back(variable);
  }
  return environment;
}

std::vector<char*> Pointers(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

// In a session of its own, so that it is ended as a group and asks nothing on this process's terminal.
pid_t Start(std::vector<std::string> arguments, int input, int output) {
  posix_spawn_file_actions_t files;
  posix_spawnattr_t attributes;
  posix_spawn_file_actions_init(&files);
  posix_spawnattr_init(&attributes);
  posix_spawn_file_actions_adddup2(&files, input, STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&files, output, STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&files, output, STDERR_FILENO);
  posix_spawn_file_actions_addclosefrom_np(&files, STDERR_FILENO + 1);
  sigset_t none, all;
  sigemptyset(&none);
  sigfillset(&all);
  posix_spawnattr_setsigmask(&attributes, &none);
  posix_spawnattr_setsigdefault(&attributes, &all);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  std::vector<std::string> environment = Environment();
  pid_t child = 0;
  const int error = posix_spawnp(&child, arguments.front().c_str(), &files, &attributes,
                                 Pointers(arguments).data(), Pointers(environment).data());
  posix_spawn_file_actions_destroy(&files);
  posix_spawnattr_destroy(&attributes);
  if (error != 0) Raise(error);
  return child;
}

// A started program. Its end is awaited at last in the destructor, so that it leaves no process behind.
class Child {
 public:
  Child(const std::vector<std::string>& arguments, std::string_view input);
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;
  ~Child();

  // Waits for the end. Returns false after the time or an interruption.
  bool Wait(Clock::time_point end, const Interruption& interruption);

  // Ends it with the processes that it started.
  void End();

  siginfo_t Reap();
  std::string TakeOutput() { return std::move(output_); }

 private:
  bool Ended() const { return Interruption::WaitUninterrupted(process_.Number(), POLLIN, milliseconds(0)); }
  void ReadOutput();

  pid_t number_ = 0;
  Descriptor process_, pipe_, events_;
  std::string output_;
  bool reaped_ = false;
};

Child::Child(const std::vector<std::string>& arguments, std::string_view input) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) Raise(errno);
  pipe_ = Descriptor(ends[0]);
  const Descriptor output = Above(Descriptor(ends[1]));
  fcntl(pipe_.Number(), F_SETFL, O_NONBLOCK);
  const Descriptor file = FileOf(input);
  events_ = Descriptor(epoll_create1(EPOLL_CLOEXEC));
  if (!events_) Raise(errno);
  number_ = Start(arguments, file.Number(), output.Number());
  process_ = Descriptor(pidfd_open(number_, 0));
  epoll_event event{EPOLLIN, {}};
  if (!process_ || epoll_ctl(events_.Number(), EPOLL_CTL_ADD, process_.Number(), &event) != 0 ||
      epoll_ctl(events_.Number(), EPOLL_CTL_ADD, pipe_.Number(), &event) != 0) {
    const int error = errno;
    kill(-number_, SIGKILL);
    Reap();
    Raise(error);
  }
}

Child::~Child() {
  if (reaped_) return;
  End();
  Reap();
}

void Child::ReadOutput() {
  if (!pipe_) return;
  std::array<char, 4096> buffer;
  const ssize_t count = read(pipe_.Number(), buffer.data(), buffer.size());
  if (count < 0) return;
  if (count == 0) {
    pipe_ = Descriptor();  // which also ends its events
    return;
  }
  output_.append(buffer.data(), static_cast<std::size_t>(count));
  if (output_.size() > kKeptOutput) output_.erase(0, output_.size() - kKeptOutput);
}

bool Child::Wait(Clock::time_point end, const Interruption& interruption) {
  while (!Ended()) {
    const auto left = std::chrono::ceil<milliseconds>(end - Clock::now());
    if (left <= milliseconds(0) || !interruption.Wait(events_.Number(), POLLIN, left)) return false;
    ReadOutput();
  }
  constexpr int kMostReads = 32;  // a process that it left behind may write on
  for (int i = 0; i < kMostReads; ++i) ReadOutput();
  return true;
}

void Child::End() {
  constexpr milliseconds kTimeToEnd(200);
  kill(-number_, SIGTERM);
  Interruption::WaitUninterrupted(process_.Number(), POLLIN, kTimeToEnd);
  // Its number belongs to no other process before it is reaped.
  kill(-number_, SIGKILL);
}

siginfo_t Child::Reap() {
  siginfo_t info{};
  while (waitid(P_PID, static_cast<id_t>(number_), &info, WEXITED) != 0 && errno == EINTR) continue;
  reaped_ = true;
  return info;
}

}  // namespace

CommandEnd RunCommand(const std::vector<std::string>& arguments, std::string_view input, milliseconds longest,
                      const Interruption& interruption) {
  Child child(arguments, input);
  CommandEnd end;
  if (!child.Wait(Clock::now() + longest, interruption)) {
    end.How = interruption.IsSet() ? CommandEnd::Kind::Interrupted : CommandEnd::Kind::TooLong;
    child.End();
  }
  const siginfo_t info = child.Reap();
  if (end.How == CommandEnd::Kind::Exited) {
    if (info.si_code != CLD_EXITED) end.How = CommandEnd::Kind::Signalled;
    end.Number = info.si_status;
  }
  end.Output = child.TakeOutput();
  return end;
}

}  // namespace Gateway
