// Command: how a subcommand of tvmail joins the program, and the exit codes that all of them share.
//
// A command adds itself to the parser and sets Run in its callback; the program calls Run after the whole
// command line has been read, prints a Failure that leaves it on standard error as "tvmail: ...", and exits
// with 75 then. Everything runs on the main thread.
#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace Host {

// The codes of sysexits, so that a mail server can tell what to do with the mail.
enum ExitCode : int {
  Done = 0,
  WrongUse = 64,       // the command line is wrong
  DataRefused = 65,    // the input is at fault; trying again won't help
  CannotCreate = 73,   // a file can't be made
  TryAgain = 75,       // anything else; nothing is lost, try again
  NotConfigured = 78,  // no such mailbox, no stores
};

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
