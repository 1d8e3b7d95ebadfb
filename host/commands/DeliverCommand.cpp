#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>

#include "gateway/delivery/Delivery.h"
#include "gateway/sources/StopSignal.h"
#include "host/CommandError.h"
#include "host/Mailboxes.h"
#include "host/Stores.h"
#include "host/commands/Command.h"
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

One line is printed for each message: its source, its Message-ID, and "delivered", or "refused" or "to be tried
again" with the reason. If the reply has no text, "delivered" is followed by the reason in parentheses: the mail is
encrypted, or its text is below the line above which replies are read. With --json each line is an object: source, messageId, reason (for
people; also why a reply is empty), failure (the component's text; empty if the message was delivered).
The words of the outcome are English in every language, for programs that read them; the reason is a sentence in
the language of LANG.

After SIGTERM or SIGINT no other message is begun, and the exit code is 75 if any is left. If nobody reads the
lines, those that are not written are counted on standard error.

Exit codes:
  0   every message was delivered
  65  a message was refused because of its sender, its subject, its body, or a discussion that doesn't exist.
      Trying again won't help. The reply of an unknown or refused sender is stored all the same: don't deliver it
      a second time.
  75  a message couldn't be delivered now and has to be tried again, or it is unknown whether it was. 75 takes
      precedence over 65. Also if the store of the mailboxes is missing, for example on a disk that isn't mounted.
  64  the command line is wrong
  78  the store of the mailboxes exists, but the mailbox doesn't

A message that is delivered twice makes two replies. If one of several messages has to be tried again, pass only
those listed so to the next call. A mail server should pass one message in each call. A reply is stored before its
line is printed. If the program or the machine was stopped, the last reply may be stored without its line: check
"tvmail project show" before you deliver that message again.)";

struct DeliverOptions {
  std::string MailBox;
  std::vector<std::string> Sources;
  bool Json = false;
  bool Mbox = false;
};

int Deliver(const DeliverOptions& options) {
  const String mailBox = Trim(ArgumentText(options.MailBox));
  // If the disk of the mailboxes isn't mounted, the mail server has to try again.
  RequireStore(Hive::LocalMachine, TryAgain);
  RequireMailbox(mailBox);
  // A delivery has no user who could answer a dialog.
  Runtime::InstallToolkit(nullptr);
  Gateway::CatchStopSignals();

  Gateway::DeliveryReport report(options.Json);
  const auto input = options.Mbox ? Gateway::StandardInput::Mbox : Gateway::StandardInput::OneMail;
  switch (Gateway::Deliver(mailBox, {}, options.Sources, input, report)) {
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

}  // namespace

void AddDeliverCommand(CLI::App& program, Invocation& invocation) {
  CLI::App* command = program.add_subcommand("deliver", "Turn mails into replies in a project's discussions");
  const auto options = std::make_shared<DeliverOptions>();
  command->add_option("MAILBOX", options->MailBox, "The mailbox whose project gets the replies")->required();
  command->add_option("SOURCE", options->Sources, "Message files, mboxes, Maildirs; - for standard input");
  command->add_flag("--json", options->Json, "Print one JSON object a line for each message");
  command->add_flag("--mbox", options->Mbox, "Standard input is an mbox");
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
