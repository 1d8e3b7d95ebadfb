#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>

#include "gateway/delivery/Delivery.h"
#include "gateway/policy/AuthenticationResults.h"
#include "gateway/service/Configuration.h"
#include "gateway/service/MailboxStatus.h"
#include "gateway/sources/StopSignal.h"
#include "host/CommandError.h"
#include "host/Mailboxes.h"
#include "host/Stores.h"
#include "host/commands/Command.h"
#include "mime/Limits.h"
#include "runtime/ProcessServices.h"

namespace Host {
namespace {

constexpr const char* kNotes =
    R"(Each message becomes a reply in the discussion that its subject names. A source is a message file, an mbox
(its first line is "From " with a sender and a time), a Maildir (its folders new and cur), or "-" for standard
input, which is the default. Mails are only read: none is moved, marked or deleted.

Standard input is exactly one message, whatever its lines contain. A "From " line that a mail server writes in
front of it is dropped. With --mbox standard input is an mbox. Use that for your own files only, never in the
configuration of a mail server.

A message that isn't a reply of a project's user is refused:
  - from a stranger: no user of the project has the sender's address, or that user doesn't take part by mail.
    With --strangers post its reply is stored in the name of the user who opens the project for the mailbox.
  - automatic: out-of-office mail, delivery reports, mailing lists, and other mail of programs
  - empty: without text of its own, for example encrypted, or with text only below the line above which replies
    are read
  - larger than --size-limit, or beyond what is read at all
  - with --require-authenticated: the topmost Authentication-Results of that server (RFC 8601) doesn't prove the
    sender's domain. Only a server that removes forged fields of its own name may be named.
  - without a discussion of the project in its subject, or too long for a reply
Where an option is left out, the mailbox's section of tvmail.toml decides, if there is one: see "tvmail serve
--help". If that file isn't valid, every message has to be tried again.

Each message is stored once, also if it comes again, several processes deliver it at once, or the program or
the machine was stopped. It is recognised by its Message-ID and sender, or by its content without a Message-ID.
So deliver everything again if you are in doubt.

One line is printed for each message when its outcome is on disk: its source, its Message-ID, and "delivered",
"duplicate" (it was stored before), "refused", "held" or "to be tried again", with the reason. The words of the
outcome are English in every language, for programs that read them; the reason is in the language of LANG. With --json each line is an object:
  source, messageId
  outcome      delivered, duplicate, refused, held or retry
  reason       for people; also why a reply that was delivered is empty
  replyStored  true if a reply was stored now
  failure      the component's text; empty if it had no complaint or wasn't called

Mail servers should pass one message in each call, with --hold: refused messages are then kept with their reason,
and an administrator decides; see "tvmail held --help". Without --hold the reason why a single message on standard
input is refused is printed on standard error as well, for its sender. With --quiet nothing else is printed, so
that a server that returns the message adds that reason alone.

Exit codes:
  0   every message was delivered, a duplicate, or held
  65  a message was refused; trying again won't help. With --hold only one of more than 128 MB, which can't be
      kept either, so that the mail server returns it to its sender.
  75  a message couldn't be delivered or held now, and has to be tried again. Its reply was not stored. 75 takes
      precedence over 65. Also if the store of the mailboxes is missing, for example on a disk that isn't mounted.
  64  the command line is wrong
  78  the store of the mailboxes exists, but the mailbox doesn't)";

constexpr const char* kRefuse = "refuse";
constexpr const char* kPost = "post";
constexpr std::size_t kMegabyte = std::size_t{1} << 20;

struct DeliverOptions {
  std::string MailBox;
  std::vector<std::string> Sources;
  bool Json = false;
  bool Quiet = false;
  bool Mbox = false;
  bool Hold = false;
  // Without a value, the configuration decides.
  std::optional<std::string> Strangers, Automatic, Empty, RequireAuthenticated;
  std::optional<std::size_t> SizeLimit;  // in MB
};

Gateway::DeliverySettings SettingsOf(const DeliverOptions& options, const String& mailBox) {
  Gateway::DeliverySettings settings = Gateway::SettingsOf(mailBox);
  Gateway::PolicySettings& policy = settings.Policy;
  settings.Hold = options.Hold;
  if (options.Strangers) policy.PostStrangers = options.Strangers == kPost;
  if (options.Automatic) policy.PostAutomatic = options.Automatic == kPost;
  if (options.Empty) policy.PostEmpty = options.Empty == kPost;
  if (options.RequireAuthenticated)
    policy.RequireAuthenticated = Trim(ArgumentText(*options.RequireAuthenticated));
  if (options.SizeLimit) policy.SizeLimit = *options.SizeLimit * kMegabyte;
  return settings;
}

int Deliver(const DeliverOptions& options) {
  const String mailBox = Trim(ArgumentText(options.MailBox));
  const Gateway::DeliverySettings settings = SettingsOf(options, mailBox);
  // If the disk of the mailboxes isn't mounted, the mail server has to try again.
  RequireStore(Hive::LocalMachine, TryAgain);
  RequireMailbox(mailBox);
  // A delivery has no user who could answer a dialog.
  Runtime::InstallToolkit(nullptr);
  Gateway::CatchStopSignals();

  using Gateway::DeliveryReport;
  const auto form = options.Quiet  ? DeliveryReport::Form::Nothing
                    : options.Json ? DeliveryReport::Form::Json
                                   : DeliveryReport::Form::Text;
  const bool oneMail =
      options.Sources.size() == 1 && !options.Mbox && Gateway::IsStandardInput(options.Sources.front());
  DeliveryReport report(form, oneMail);
  const auto input = options.Mbox ? Gateway::StandardInput::Mbox : Gateway::StandardInput::OneMail;
  Gateway::StatusRecorder status(mailBox);
  const auto handled = [&status](const Gateway::MailResult& result) { status.Add(result); };
  switch (Gateway::Deliver(mailBox, settings, options.Sources, input, report, handled)) {
    case Gateway::Outcome::Delivered:
    case Gateway::Outcome::Duplicate:
    case Gateway::Outcome::Held:
      return Done;
    case Gateway::Outcome::Refused:
      return DataRefused;
    case Gateway::Outcome::Retry:
      break;
  }
  return TryAgain;
}

// With any code but 75 a mail server would return the mail, which doesn't cause these failures.
int DeliverOrKeep(const DeliverOptions& options) {
  try {
    return Deliver(options);
  } catch (const Failure& failure) {
    throw CommandError(TryAgain, failure.Description());
  }
}

// An empty name would turn the check off.
std::string FaultOfServer(const std::string& name) {
  return Gateway::IsServerName(name)
             ? ""
             : "is the name that your mail server writes into Authentication-Results, such as mx.example.org";
}

void AddPolicyOptions(CLI::App& command, DeliverOptions& options) {
  const auto add = [&](const char* name, std::optional<std::string>& value, const char* description) {
    command.add_option(name, value, description)
        ->check(CLI::IsMember({kRefuse, kPost}))
        ->type_name("refuse|post");
  };
  add("--strangers", options.Strangers,
      "Mail of senders who don't take part in the project by mail: refuse unless set");
  add("--automatic", options.Automatic, "Mail of programs: refuse unless set");
  add("--empty", options.Empty, "Mail without text of its own: refuse unless set");
  command
      .add_option("--require-authenticated", options.RequireAuthenticated,
                  "Refuse mail whose sender's domain this server didn't authenticate")
      ->check(FaultOfServer)
      ->type_name("AUTHSERV-ID");
  command
      .add_option("--size-limit", options.SizeLimit,
                  "Refuse mail of more megabytes, at most 128; 25 unless set")
      ->check(CLI::Range(std::size_t{1}, Mime::kLargestMail / kMegabyte))
      ->type_name("MB");
}

}  // namespace

void AddDeliverCommand(CLI::App& program, Invocation& invocation) {
  CLI::App* command = program.add_subcommand("deliver", "Turn mails into replies in a project's discussions");
  const auto options = std::make_shared<DeliverOptions>();
  command->add_option("MAILBOX", options->MailBox, "The mailbox whose project gets the replies")->required();
  command->add_option("SOURCE", options->Sources, "Message files, mboxes, Maildirs; - for standard input");
  command->add_flag("--json", options->Json, "Print one JSON object a line for each message");
  command->add_flag("--quiet", options->Quiet, "Print no outcomes; only errors, and the reason for a sender");
  command->add_flag("--mbox", options->Mbox, "Standard input is an mbox");
  command->add_flag("--hold", options->Hold, "Keep refused messages, with their reason");
  AddPolicyOptions(*command, *options);
  command->footer(kNotes);
  command->callback([options, &invocation] {
    if (options->Sources.empty()) options->Sources.emplace_back("-");
    if (options->Mbox && std::ranges::find(options->Sources, "-") == options->Sources.end())
      throw CLI::ValidationError("--mbox",
                                 "is for standard input; a file is recognised as an mbox by its first line");
    invocation.Run = [options] { return DeliverOrKeep(*options); };
  });
}

}  // namespace Host
