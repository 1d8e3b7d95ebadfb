// CommandRun: runs a program with an input and limits of time and output.
#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

#include "gateway/sources/Interruption.h"

namespace Gateway {

struct CommandEnd {
  enum class Kind { Exited, Signalled, TooLong, Interrupted };
  Kind How = Kind::Exited;
  int Number = 0;      // the exit code, or the signal
  std::string Output;  // the end of what it wrote to standard output and standard error
};

// Runs a program, whose path or name and arguments are given, and waits for its end. It has the input on
// standard input, no other open file, no terminal, and the folders of mail programs (/usr/sbin, /usr/lib) at
// the end of its PATH. After the time or an interruption it is ended with the processes that it started,
// within 0.2 s; otherwise those go on. Raises 57 if it can't be started. Any thread.
CommandEnd RunCommand(const std::vector<std::string>& arguments, std::string_view input,
                      std::chrono::milliseconds longest, const Interruption& interruption);

}  // namespace Gateway
