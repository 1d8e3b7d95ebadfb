// tvmail check: proves that mailboxes can be served, and changes nothing.
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "gateway/service/MailboxCheck.h"
#include "host/CommandError.h"
#include "host/OutboundSettings.h"
#include "host/Stores.h"
#include "host/commands/Command.h"
#include "host/commands/ConfigurationOption.h"
#include "platform/TerminalText.h"
#include "runtime/ProcessServices.h"

namespace Host {
namespace {

constexpr const char* kNotes =
    R"(Checks the configuration, the stores and, for each mailbox: its record, its project, the logon to the project
with the stored password, the folder of held mail, the logon to its source, and the server or command by which the
project's mail is sent. Also the server or command of this system user's own outbound e-mail (tvmail outbound), by
which the notifications of the user's posted replies are sent, if it is complete and enabled. Without a name, all
mailboxes of the configuration and of this machine are checked. No mail is read, marked, moved or sent. One line is
printed for each check: the mailbox, the check, and "ok" or what is wrong and what to do.

Exit codes:
  0   everything is as it should be
  75  something is wrong that may be right later, such as a server that doesn't answer
  78  the configuration isn't valid, or the stores, a mailbox or its record are missing)";

void Print(StringView mailbox, const std::string& check, const String& problem) {
  std::cout << (mailbox.empty() ? "" : TerminalLine(mailbox) + "  ") << check << "  "
            << (problem.empty() ? "ok" : TerminalLine(problem)) << '\n'
            << std::flush;
}

// True if mail can be sent by the settings of this system user, or is to be sent by none.
bool CheckOutbound(const Gateway::NoticeSettings& servers) {
  String problem;
  try {
    const OutboundSettings settings = ReadOutboundSettings();
    if (!settings.Complete()) return true;
    settings.Check(servers);
  } catch (const std::exception&) {
    problem = CurrentFailure().Description();
  }
  Print({}, "outbound", problem);
  return problem.empty();
}

int Check(const ConfigurationOption& option) {
  RequireStores();
  Runtime::InstallToolkit(nullptr);
  const Gateway::Configuration configuration = option.ReadIfAny();
  Print({}, "stores", {});
  int code = Done;
  for (const std::string& line : configuration.Warnings) {
    code = NotConfigured;
    Print({}, "configuration", FromUtf8(line));
  }
  if (configuration.Warnings.empty()) Print({}, "configuration", {});
  if (!CheckOutbound(configuration.DefaultNotices) && code == Done) code = TryAgain;
  for (const String& mailbox : option.NamesOrAll(configuration)) {
    for (const auto& [name, problem] :
         Gateway::CheckMailbox(mailbox, configuration.Find(mailbox), configuration.NoticesOf(mailbox))) {
      Print(mailbox, name, problem);
      if (problem.empty()) continue;
      if (name == "record") code = NotConfigured;
      if (code == Done) code = TryAgain;
    }
  }
  return code;
}

}  // namespace

void AddCheckCommand(CLI::App& program, Invocation& invocation) {
  CLI::App* command = program.add_subcommand("check", "Prove that mailboxes can be served");
  const auto option = std::make_shared<ConfigurationOption>();
  option->AddTo(*command);
  command->footer(kNotes);
  command->callback([option, &invocation] { invocation.Run = [option] { return Check(*option); }; });
}

}  // namespace Host
