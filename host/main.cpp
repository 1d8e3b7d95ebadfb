// tvmail: the mail-reader host on the command line.
#include <CLI/CLI.hpp>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <iostream>
#include <memory>
#include <new>

#include "host/CommandError.h"
#include "host/StandardStreams.h"
#include "host/commands/Command.h"
#include "host/terminal/TerminalToolkit.h"
#include "platform/Failure.h"
#include "platform/TerminalText.h"
#include "runtime/ProcessServices.h"
#include "runtime/SystemReason.h"

namespace Host {

namespace {

int Explain(ExitCode code, const std::string& text) {
  std::cerr << "tvmail: " << TerminalText(text) << '\n';
  return code;
}

// Writes the buffered output. Returns the code, or that of a failed write.
int Written(int code) {
  std::cout.flush();
  if (std::cout) return code;
  return Explain(TryAgain, "the output can't be written: the disk may be full, or the pipe closed");
}

int Run(const Invocation& invocation) {
  try {
    Runtime::InstallToolkit(std::make_shared<TerminalToolkit>());
    return Written(invocation.Run());
  } catch (const CommandError& error) {
    return Explain(error.Code(), error.what());
  } catch (const Platform::Failure& failure) {
    return Explain(CodeOf(failure.Number()), failure.what());
  } catch (const std::bad_alloc&) {
    return Explain(TryAgain, Runtime::SystemReason(ENOMEM));
  } catch (const std::exception& error) {
    return Explain(TryAgain, std::string(error.what()) + ": nothing was lost, try again");
  }
}

int Main(int argc, char** argv) {
  CLI::App program(
      "Turns e-mail replies into replies in Talvane discussions.\n"
      "Start with 'tvmail init'; 'tvmail COMMAND --help' describes a command.",
      "tvmail");
  program.set_version_flag("--version", "tvmail " TVMAIL_VERSION, "Print the version and exit");
  program.require_subcommand(1);
  Invocation invocation;
  AddInitCommand(program, invocation);
  AddProjectCommand(program, invocation);
  AddMailboxCommand(program, invocation);
  AddOutboundCommand(program, invocation);
  AddDeliverCommand(program, invocation);
  AddHeldCommand(program, invocation);
  AddFetchCommand(program, invocation);
  AddServeCommand(program, invocation);
  AddNotifyCommand(program, invocation);
  AddCheckCommand(program, invocation);
  AddStatusCommand(program, invocation);
  AddKeystoreCommand(program, invocation);
  AddAboutCommand(program, invocation);
  program.footer(
      "Exit codes: 0 done, 64 wrong use, 65 the input is refused, 73 permission is missing to create or\n"
      "write a file, 75 any other failure or a cancelled dialog (nothing is lost, try again), 78 not set up "
      "or\n"
      "no such mailbox.");
  try {
    program.parse(argc, argv);
  } catch (const CLI::Success& help) {
    return Written(program.exit(help));
  } catch (const CLI::ParseError& error) {
    // An unknown word is reported rather than the missing command. The parser's own sentences stay English,
    // as the help that they refer to.
    const auto unknown = program.remaining(true);
    const std::string what = unknown.empty() ? error.what() : unknown.front() + " is unknown";
    return Explain(WrongUse, what + ": see --help of the command");
  }
  return Run(invocation);
}

}  // namespace
}  // namespace Host

int main(int argc, char** argv) try {
  Host::HoldStandardStreams();
  // A write beyond the file size limit then fails with an error instead of ending the program.
  std::signal(SIGXFSZ, SIG_IGN);
  return Host::Main(argc, argv);
} catch (...) {
  std::fputs("tvmail: out of memory, nothing was lost: try again\n", stderr);
  return Host::TryAgain;
}
