// tvmail notify: sends what mailboxes have to send, once.
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "gateway/notices/NoticeSender.h"
#include "gateway/sources/StopSignal.h"
#include "host/CommandError.h"
#include "host/Mailboxes.h"
#include "host/commands/Command.h"
#include "host/commands/ConfigurationOption.h"
#include "host/commands/NotifyReport.h"
#include "host/commands/StopWatch.h"
#include "platform/NoticeTexts.h"
#include "platform/Services.h"
#include "runtime/ProcessServices.h"

namespace Host {
namespace {

constexpr const char* kNotes =
    R"(Sends the notifications of new replies, and answers to senders, that are due: of the named mailboxes, or of all of
this machine. tvmail serve does so all the time; without it, call this every minute, from cron for example. It needs
no tvmail.toml. Mailboxes with notices = false there are left out.

A mail that can't be sent now is deferred: it is tried again after 5 seconds at first and at most every hour, for 5
days. A mail that is refused for good is given up. tvmail status shows both. Not more than notices-per-minute mails
are sent for a mailbox; how many wait for that limit is printed, and when to call it again.

After a mail server was repaired, --now tries at once every mail that waits for another attempt; tvmail serve does the
same when it reads its configuration again (SIGHUP). The limit a minute still holds.

One line is printed for each attempt: the mailbox, the address, what is sent, and the outcome. With --json an object
a line: mailbox, address, kind (reply, answer), discussion, reply, outcome (sent, deferred, givenUp), reason; and at
the limit a minute: mailbox, outcome (limited), waiting, perMinute, seconds (until the next mail may be sent).

--drop removes what waits to be sent, and sends nothing. WARNING: no user is notified of those replies then, and this
can't be undone. With --json it prints an object a line: mailbox, dropped.

Exit codes:
  0   everything that was due was sent, or as much as the limit a minute allows
  75  a mail was deferred or given up, a mailbox failed, or the program was stopped
  78  the configuration isn't valid, or there is no such mailbox)";

struct NotifyOptions {
  ConfigurationOption Configuration;
  bool Json = false;
  bool Drop = false;
  bool Now = false;
};

struct Sending {
  MailboxRecord Mailbox;
  Gateway::NoticeSettings Settings;
};

std::vector<Sending> MailboxesToSend(const NotifyOptions& options) {
  const Gateway::Configuration configuration = options.Configuration.ReadIfAny();
  const bool all = options.Configuration.Mailboxes.empty();
  std::vector<Sending> mailboxes;
  for (const String& name : options.Configuration.NamesOrAll(configuration)) {
    const Gateway::NoticeSettings& settings = configuration.NoticesOf(name);
    const auto record = FindMailbox(name);
    // A mailbox of the configuration that doesn't exist yet has nothing to send.
    if (!record && all) continue;
    if (!record) throw CommandError(NotConfigured, TextNumber::kMailboxUnknown, name);
    if (!settings.Send && !all && !options.Drop)
      throw CommandError(NotConfigured, TextNumber::kNoticesSwitchedOff, record->Name);
    if (settings.Send || options.Drop) mailboxes.push_back({*record, settings});
  }
  return mailboxes;
}

class ReportingObserver : public Gateway::NoticeObserver {
 public:
  ReportingObserver(const String& mailbox, NotifyReport& report) : mailbox_(mailbox), report_(report) {}
  void Attempted(const DueNotice& notice, const Gateway::SendResult& result) override {
    report_.Add(mailbox_, notice, result);
  }
  void WorkingFor(std::chrono::minutes) override {}

 private:
  const String& mailbox_;
  NotifyReport& report_;
};

void Send(const Sending& sending, bool now, NotifyReport& report) {
  const String& mailbox = sending.Mailbox.Name;
  ReportingObserver observer(mailbox, report);
  Gateway::NoticeSender sender(sending.Settings, observer);
  const StopWatch watch([&sender] { sender.Interrupt(); });
  const auto pass = sender.Pass(sending.Mailbox.ProjectPath, now);
  report.EndMailbox(pass);
  if (pass.Limited && pass.Next)
    report.Limited(mailbox, sender.Ready(), sending.Settings.PerMinute, *pass.Next);
  if (!pass.Problem.empty()) report.Fail(mailbox, pass.Problem);
  if (!pass.Complete && !pass.Reason.empty()) report.Fail(mailbox, pass.Reason);
}

void Drop(const Sending& sending, NotifyReport& report) {
  const NoticeQueue queue(Services().CreateByName(NoticeQueue::kName));
  queue.Open(sending.Mailbox.ProjectPath);
  if (queue.Lock())
    report.Dropped(sending.Mailbox.Name, queue.Drop());
  else
    report.Fail(sending.Mailbox.Name, Runtime::TextOf(TextNumber::kNoticesInUse, sending.Mailbox.Name));
}

int Notify(const NotifyOptions& options) {
  const std::vector<Sending> mailboxes = MailboxesToSend(options);
  Runtime::InstallToolkit(nullptr);
  Gateway::CatchStopSignals();
  NotifyReport report(options.Json);
  for (const Sending& sending : mailboxes) {
    if (Gateway::StopWanted()) break;
    try {
      options.Drop ? Drop(sending, report) : Send(sending, options.Now, report);
    } catch (const std::exception&) {
      const Failure failure = CurrentFailure();
      if (!Gateway::StopWanted()) report.Fail(sending.Mailbox.Name, failure.Description());
    }
  }
  return report.Finish(Gateway::StopWanted(), options.Drop) ? Done : TryAgain;
}

}  // namespace

void AddNotifyCommand(CLI::App& program, Invocation& invocation) {
  CLI::App* command = program.add_subcommand("notify", "Send the notifications that are due, once");
  const auto options = std::make_shared<NotifyOptions>();
  options->Configuration.AddTo(*command);
  command->add_flag("--json", options->Json, "Print one JSON object a line for each attempt");
  CLI::Option* now =
      command->add_flag("--now", options->Now, "Try at once what waits for another attempt, too");
  command->add_flag("--drop", options->Drop, "Remove what waits to be sent, without sending it")
      ->excludes(now);
  command->footer(kNotes);
  command->callback([options, &invocation] { invocation.Run = [options] { return Notify(*options); }; });
}

}  // namespace Host
