#include "host/terminal/Pager.h"

#include <sys/wait.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iostream>

namespace Host {

namespace {

constexpr const char* kPagers = "if command -v less >/dev/null; then exec less; else exec more; fi";

struct PagerEnded {};

// Signals for the pager, and SIGPIPE when it ends, don't end the program.
class SignalsIgnoredForPager {
 public:
  SignalsIgnoredForPager() {
    for (std::size_t i = 0; i < kSignals.size(); ++i) before_[i] = std::signal(kSignals[i], SIG_IGN);
  }
  SignalsIgnoredForPager(const SignalsIgnoredForPager&) = delete;
  SignalsIgnoredForPager& operator=(const SignalsIgnoredForPager&) = delete;
  ~SignalsIgnoredForPager() {
    for (std::size_t i = 0; i < kSignals.size(); ++i) std::signal(kSignals[i], before_[i]);
  }

 private:
  static constexpr std::array kSignals = {SIGINT, SIGQUIT, SIGPIPE};
  std::array<void (*)(int), kSignals.size()> before_{};
};

class Pager {
 public:
  Pager() {
    const char* const wanted = std::getenv("PAGER");
    setenv("LESS", "FRX", 0);  // a short page is left on the screen
    pipe_ = popen(wanted && *wanted ? wanted : kPagers, "w");
  }
  Pager(const Pager&) = delete;
  Pager& operator=(const Pager&) = delete;
  ~Pager() { End(); }

  void Write(std::string_view utf8) {
    if (!pipe_ || std::fwrite(utf8.data(), 1, utf8.size(), pipe_) < utf8.size()) throw PagerEnded();
  }

  // Waits until the user ends the pager. False if it could not be started.
  bool End() {
    if (!pipe_) return false;
    constexpr int kNotFound = 127;
    const int status = pclose(pipe_);
    pipe_ = nullptr;
    return !(WIFEXITED(status) && WEXITSTATUS(status) == kNotFound);
  }

 private:
  const SignalsIgnoredForPager signals_;
  std::FILE* pipe_ = nullptr;
};

}  // namespace

void ShowPaged(const Terminal& terminal, const std::function<void(const PageWriter&)>& produce) {
  if (terminal.Interactive()) {
    Pager pager;
    try {
      produce([&](std::string_view utf8) { pager.Write(utf8); });
    } catch (const PagerEnded&) {
    }
    if (pager.End()) return;
  }
  produce([](std::string_view utf8) { std::cout << utf8; });
}

}  // namespace Host
