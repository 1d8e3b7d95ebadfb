// Dovecot: the real server, started by a test in the machine that dovecot.sh prepares.
#pragma once

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <thread>

#include "tests/sources/LoopbackServer.h"

namespace Tests {

class Dovecot {
 public:
  // Of its configuration, certificates and mail.
  static std::filesystem::path Folder() { return Variable("WORK"); }

  Dovecot() { Start(); }
  ~Dovecot() { Kill(); }

  // Dovecot ends at once while a process of the one that was killed still holds a socket.
  void Start() {
    Launch();
    for (int attempt = 0; attempt < 100 && !(Answers(143) && Answers(995)); ++attempt) {
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
      if (waitpid(master_, nullptr, WNOHANG) == master_) Launch();
    }
  }

  // All processes of the server end at once.
  void Kill() {
    kill(-master_, SIGKILL);
    kill(master_, SIGKILL);
    waitpid(master_, nullptr, 0);
  }

 private:
  static std::string Variable(const char* name) {
    if (const char* const value = getenv(name)) return value;
    throw std::runtime_error(std::string(name) + " isn't set: the test runs by dovecot.sh alone");
  }

  static bool Answers(std::uint16_t port) {
    const int number = ConnectTo(port);
    if (number >= 0) close(number);
    return number >= 0;
  }

  void Launch() {
    const std::string program = Variable("SERVERS") + "/usr/sbin/dovecot";
    const std::string configuration = (Folder() / "dovecot.conf").string();
    master_ = fork();
    if (master_ != 0) return;
    setpgid(0, 0);
    execl(program.c_str(), program.c_str(), "-F", "-c", configuration.c_str(), nullptr);
    _exit(127);
  }

  pid_t master_ = -1;
};

}  // namespace Tests
