// Command: how a subcommand of tvmail joins the program.
//
// A command adds itself to the parser and sets Run in its callback; the program calls Run after the whole
// command line has been read, prints a Failure that leaves it on standard error as "tvmail: ...", and exits
// with the code of its number then. Everything runs on the main thread.
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
void AddAboutCommand(CLI::App& program, Invocation& invocation);

}  // namespace Host
