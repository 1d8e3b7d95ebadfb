// tvmail: the mail-reader host on the command line.
#include <CLI/CLI.hpp>
#include <csignal>
#include <iostream>
#include <memory>

#include "host/CommandError.h"
#include "host/StandardStreams.h"
#include "host/commands/Command.h"
#include "host/terminal/TerminalToolkit.h"
#include "platform/Failure.h"
#include "platform/TerminalText.h"
#include "runtime/ProcessServices.h"

namespace Host {

namespace {

int Explain(ExitCode code, const std::string& text) {
  std::cerr << "tvmail: " << TerminalText(text) << '\n';
  return code;
}

int Run(const Invocation& invocation) {
  try {
    Runtime::InstallToolkit(std::make_shared<TerminalToolkit>());
    const int code = invocation.Run();
    std::cout.flush();
    if (!std::cout)
      return Explain(TryAgain, "the output can't be written: look for a full disk or a closed pipe");
    return code;
  } catch (const CommandError& complaint) {
    return Explain(complaint.Code(), complaint.what());
  } catch (const Platform::Failure& failure) {
    return Explain(CodeOf(failure.Number()), failure.what());
  } catch (const std::exception& error) {
    return Explain(TryAgain, std::string(error.what()) + ": nothing was lost, try again");
  }
}

int Main(int argc, char** argv) {
  CLI::App program(
      "Turns e-mail replies into replies in Talvane discussions.\n"
      "Start with 'tvmail init'; 'tvmail COMMAND --help' tells more of a command.",
      "tvmail");
  program.set_version_flag("--version", "tvmail " TVMAIL_VERSION, "Print the version and exit");
  program.require_subcommand(1);
  Invocation invocation;
  AddInitCommand(program, invocation);
  AddProjectCommand(program, invocation);
  AddMailboxCommand(program, invocation);
  AddOutboundCommand(program, invocation);
  AddDeliverCommand(program, invocation);
  AddKeystoreCommand(program, invocation);
  AddAboutCommand(program, invocation);
  program.footer(
      "Exit codes: 0 done, 64 wrong use, 65 the input is refused, 73 the stores can't be made (init),\n"
      "75 anything else, also a dialog that was cancelled (nothing is lost, try again), 78 not set up or no\n"
      "such mailbox.");
  try {
    program.parse(argc, argv);
  } catch (const CLI::Success& help) {
    return program.exit(help);
  } catch (const CLI::ParseError& error) {
    // A word that is no command is what a person wants to hear of, rather than of the command that is
    // missing.
    const auto unknown = program.remaining(true);
    const std::string what = unknown.empty() ? error.what() : unknown.front() + " isn't known here";
    return Explain(WrongUse, what + ": see --help of the command");
  }
  return Run(invocation);
}

}  // namespace
}  // namespace Host

int main(int argc, char** argv) {
  Host::HoldStandardStreams();
  // A write beyond the limit on the size of files fails as on a full disk, instead of ending the program.
  std::signal(SIGXFSZ, SIG_IGN);
  return Host::Main(argc, argv);
}
