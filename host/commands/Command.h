// Command: how a subcommand is added to tvmail.
//
// A command adds itself to the parser and sets Run in its callback. The program calls Run after it has parsed
// the whole command line. Run returns the exit code. A Failure that Run raises is printed on standard error
// as "tvmail: ...", and its number decides the exit code. Everything runs on the main thread.
#pragma once

#include <functional>

#include "host/ExitCode.h"

namespace CLI {
class App;
}

namespace Host {

struct Invocation {
  std::function<int()> Run;
};

void AddInitCommand(CLI::App& program, Invocation& invocation);
void AddProjectCommand(CLI::App& program, Invocation& invocation);
void AddMailboxCommand(CLI::App& program, Invocation& invocation);
void AddOutboundCommand(CLI::App& program, Invocation& invocation);
void AddKeystoreCommand(CLI::App& program, Invocation& invocation);
void AddDeliverCommand(CLI::App& program, Invocation& invocation);
void AddHeldCommand(CLI::App& program, Invocation& invocation);
void AddFetchCommand(CLI::App& program, Invocation& invocation);
void AddServeCommand(CLI::App& program, Invocation& invocation);
void AddNotifyCommand(CLI::App& program, Invocation& invocation);
void AddCheckCommand(CLI::App& program, Invocation& invocation);
void AddStatusCommand(CLI::App& program, Invocation& invocation);
void AddAboutCommand(CLI::App& program, Invocation& invocation);

}  // namespace Host
