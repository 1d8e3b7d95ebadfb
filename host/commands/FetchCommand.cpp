// tvmail fetch: one pass over the sources of mailboxes.
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "gateway/delivery/DeliveryReport.h"
#include "gateway/service/MailboxWork.h"
#include "gateway/service/Service.h"
#include "gateway/sources/StopSignal.h"
#include "host/CommandError.h"
#include "host/commands/Command.h"
#include "host/commands/ConfigurationOption.h"
#include "host/commands/StopWatch.h"
#include "runtime/ProcessServices.h"

namespace Host {
namespace {

constexpr const char* kNotes =
    R"(Takes the mails that are waiting in the source of each mailbox, one mailbox after the other, and ends. Mail that is
refused is held (see tvmail held). Prints as tvmail deliver does. A mailbox that fails is reported on standard
error and stops no other. Mailboxes that tvmail serve has under way are refused.

Exit codes:
  0   every mail was delivered or held
  75  a source couldn't be reached, a mail has to be tried again, or the program was stopped
  78  the configuration is missing or not valid)";

struct FetchOptions {
  ConfigurationOption Configuration;
  bool Json = false;
};

class ReportingObserver : public Gateway::MailboxObserver {
 public:
  explicit ReportingObserver(Gateway::DeliveryReport& report) : report_(report) {}
  void Handled(const Gateway::MailResult& result, bool) override { report_.Add(result); }
  void WorkingFor(std::chrono::minutes) override {}

 private:
  Gateway::DeliveryReport& report_;
};

// False if the mailbox failed.
bool FetchMailbox(const Gateway::MailboxSettings& mailbox, Gateway::DeliveryReport& report) {
  ReportingObserver observer(report);
  try {
    Gateway::MailboxWork work(mailbox, observer);
    const StopWatch watch([&work] { work.Interrupt(); });
    work.Pass();
    return true;
  } catch (const std::exception&) {
    const Failure failure = CurrentFailure();
    if (!Gateway::StopWanted())
      std::cerr << "tvmail: " << TerminalLine(mailbox.Name + u": " + failure.Description()) << '\n';
    return false;
  }
}

int Fetch(const FetchOptions& options) {
  const Gateway::Configuration configuration = options.Configuration.Read();
  std::vector<Gateway::MailboxSettings> mailboxes;
  try {
    mailboxes =
        Gateway::MailboxesOf(configuration, options.Configuration.Names(), Gateway::MailboxNeeds::Source);
  } catch (const Failure& failure) {
    throw CommandError(NotConfigured, failure.Description());
  }
  Runtime::InstallToolkit(nullptr);
  Gateway::CatchStopSignals();
  using Form = Gateway::DeliveryReport::Form;
  Gateway::DeliveryReport report(options.Json ? Form::Json : Form::Text, false);
  bool good = true;
  for (const Gateway::MailboxSettings& mailbox : mailboxes)
    good = !Gateway::StopWanted() && FetchMailbox(mailbox, report) && good;
  const Gateway::Outcome outcome = report.Finish(Gateway::StopWanted());
  return good && outcome != Gateway::Outcome::Retry ? Done : TryAgain;
}

}  // namespace

void AddFetchCommand(CLI::App& program, Invocation& invocation) {
  CLI::App* command = program.add_subcommand("fetch", "Take the mail that waits in mailboxes' sources, once");
  const auto options = std::make_shared<FetchOptions>();
  options->Configuration.AddTo(*command);
  command->add_flag("--json", options->Json, "Print one JSON object a line for each message");
  command->footer(kNotes);
  command->callback([options, &invocation] { invocation.Run = [options] { return Fetch(*options); }; });
}

}  // namespace Host
