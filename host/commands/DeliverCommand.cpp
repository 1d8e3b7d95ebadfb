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
input, which is read where no source is given. Mails are only read: none is moved, marked or removed.

Standard input is exactly one message, whatever its lines say; the "From " line that a mail server writes in
front is dropped. With --mbox it is an mbox: give that only for a file of your own, never to a mail server.

One line tells what became of each message: its source, its Message-ID, and "delivered", or "complaint" or "to
be tried again" with the reason. A reply without text is delivered and said to be empty: that of an encrypted
mail, or of one that was written below the line above which replies are read. With --json each line is an
object: source, messageId, reason (why the reply is empty), failure (empty when the message was handled
without complaint).

Exit codes:
  0   every message was delivered
  65  a complaint about a message: its sender, its subject, its body, or no such discussion. Trying again won't
      help. The reply of an unknown or refused sender stands all the same, so don't deliver it a second time.
  75  a message couldn't be delivered now; it has to be tried again. In doubt it is 75, and 75 outdoes 65.
      Also where the store of the mailboxes is missing, as on a disk that isn't mounted.
  64  the command line is wrong
  78  the store of the mailboxes is there, and the mailbox isn't

A message that is delivered twice makes two replies. Where one of several messages has to be tried again, give
only those to the next call that are listed so; a mail server does best to hand over one message in a call.
A reply stands once its line is written; a message that was under way when the machine or this program was
killed may stand without its line, so look at "tvmail project show" before you give it again.)";

struct DeliverOptions {
  std::string MailBox;
  std::vector<std::string> Sources;
  bool Json = false;
  bool Mbox = false;
};

int Deliver(const DeliverOptions& options) {
  const String mailBox = Trim(ArgumentText(options.MailBox));
  // A mail server tries again as long as the disk of the mailboxes isn't mounted.
  RequireStore(Hive::LocalMachine, TryAgain);
  RequireMailbox(mailBox);
  // Nobody sits in front of a delivery, so there is nobody to ask or to show a box to.
  Runtime::InstallToolkit(nullptr);
  Gateway::CatchStopSignals();

  Gateway::DeliveryReport report(options.Json);
  const auto input = options.Mbox ? Gateway::StandardInput::Mbox : Gateway::StandardInput::OneMail;
  switch (Gateway::Deliver(mailBox, options.Sources, input, report)) {
    case Gateway::Outcome::Delivered:
      return Done;
    case Gateway::Outcome::Refused:
      return DataRefused;
    case Gateway::Outcome::Retry:
      break;
  }
  return TryAgain;
}

}  // namespace

void AddDeliverCommand(CLI::App& program, Invocation& invocation) {
  CLI::App* command = program.add_subcommand("deliver", "Turn mails into replies in a project's discussions");
  const auto options = std::make_shared<DeliverOptions>();
  command->add_option("MAILBOX", options->MailBox, "The mailbox whose project takes the replies")->required();
  command->add_option("SOURCE", options->Sources, "Message files, mboxes, Maildirs; - for standard input");
  command->add_flag("--json", options->Json, "Print one JSON object a line for each message");
  command->add_flag("--mbox", options->Mbox, "Standard input is an mbox");
  command->footer(kNotes);
  command->callback([options, &invocation] {
    if (options->Sources.empty()) options->Sources.emplace_back("-");
    if (options->Mbox && std::ranges::find(options->Sources, "-") == options->Sources.end())
      throw CLI::ValidationError("--mbox", "is for standard input; a file is recognised by its first line");
    invocation.Run = [options] { return Deliver(*options); };
  });
}

}  // namespace Host
