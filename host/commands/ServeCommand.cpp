// tvmail serve: serves mailboxes until it is stopped.
#include <CLI/CLI.hpp>
#include <memory>

#include "gateway/service/Service.h"
#include "host/CommandError.h"
#include "host/Stores.h"
#include "host/commands/Command.h"
#include "host/commands/ConfigurationOption.h"
#include "runtime/ProcessServices.h"

namespace Host {
namespace {

constexpr const char* kNotes =
    R"(Takes the mails of each mailbox's source as they come, and turns them into replies. Mail that is refused is held
(see tvmail held). Also sends the notifications of new replies and the answers to senders that are due, for mailboxes
without a source, too (see tvmail notify). Each mailbox has threads of its own: one whose server, disk or project
isn't there is tried again, after 5 seconds at first and at most every 15 minutes, and delays no other.
packaging/tvmail.toml explains the configuration; "tvmail check" tries it.

SIGTERM or SIGINT finishes the mails under way and ends the program; a second one ends it at once, which loses
nothing. SIGHUP reads the configuration again: mailboxes that are new, changed or removed are started or stopped,
failing ones are tried again at once, as is all that waits to be sent again, and the others go on. A mailbox that has
neither a source nor notices any more is stopped, with a warning. If the new configuration isn't valid, the errors are
logged and the old one stays in use.

One line is logged for each mail that comes or is sent, with fields: in the journal where standard error leads there (journalctl -o
json, fields TALVANE_MAILBOX, TALVANE_OUTCOME...), else as name=value on standard error. Failures of a mailbox are
logged when they begin, change or end.

A mailbox is served by one process at a time; fetch and a second serve are refused. systemd is told when the service
is ready and when it stops, and its watchdog is answered while every thread works.

Exit codes: 0 after SIGTERM or SIGINT; 75 if other processes serve all mailboxes; 78 if the configuration is
missing or not valid.)";

int Serve(const ConfigurationOption& option) {
  // A service has no user who could answer a dialog.
  Runtime::InstallToolkit(nullptr);
  std::unique_ptr<Gateway::Service> service;
  try {
    service = std::make_unique<Gateway::Service>(option.Path(), option.Names());
  } catch (const Failure& failure) {
    throw CommandError(failure.Number() == FailureNumber::DeviceFailed ? TryAgain : NotConfigured,
                       failure.Description());
  }
  service->Run();
  return Done;
}

}  // namespace

void AddServeCommand(CLI::App& program, Invocation& invocation) {
  CLI::App* command = program.add_subcommand(
      "serve", "Take mail from its sources and send notifications until stopped, as a service");
  const auto option = std::make_shared<ConfigurationOption>();
  option->AddTo(*command);
  command->footer(kNotes);
  command->callback([option, &invocation] { invocation.Run = [option] { return Serve(*option); }; });
}

}  // namespace Host
