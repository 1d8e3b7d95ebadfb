// Processes: runs functions in child processes.
#pragma once

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>

namespace Tests {

// Runs the act in a child process, whose exit status is 0, 1 if an expectation failed, or 9 after a failure.
inline pid_t StartProcess(const std::function<void()>& act) {
  const pid_t child = fork();
  if (child != 0) return child;
  try {
    act();
  } catch (...) {
    _exit(9);
  }
  _exit(testing::Test::HasFailure() ? 1 : 0);
}

// The exit status, or 128 and the signal that ended the process.
inline int CodeOf(int status) {
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

// Waits for the end of a process.
inline int EndOf(pid_t child) {
  int status = 0;
  waitpid(child, &status, 0);
  return CodeOf(status);
}

inline int InAnotherProcess(const std::function<void()>& act) {
  return EndOf(StartProcess(act));
}

inline void KillProcess(pid_t child) {
  kill(child, SIGKILL);
  EndOf(child);
}

// Limits the size of each file that the process writes, to simulate a full disk.
inline void LimitFileSize(rlim_t bytes) {
  signal(SIGXFSZ, SIG_IGN);
  const rlimit limit{bytes, bytes};
  setrlimit(RLIMIT_FSIZE, &limit);
}

}  // namespace Tests
