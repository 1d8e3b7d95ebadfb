// tvmail mailbox: binds mailboxes to projects through the component's own dialog and flows.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <iostream>
#include <memory>

#include "gateway/delivery/HandlerObject.h"
#include "host/AbsolutePath.h"
#include "host/CommandError.h"
#include "host/Mailboxes.h"
#include "host/PostfixMap.h"
#include "host/Stores.h"
#include "host/commands/MailboxShowCommand.h"
#include "host/options/OptionToolkit.h"
#include "host/options/SendOptions.h"
#include "host/terminal/Secret.h"
#include "host/terminal/ToolkitChoice.h"
#include "platform/Json.h"
#include "platform/ProgramTexts.h"
#include "platform/TerminalText.h"
#include "runtime/ProcessServices.h"
#include "runtime/Texts.h"

namespace Host {

namespace {

struct MailboxOptions {
  std::string Name;
  std::optional<std::string> Project;
  std::optional<std::string> User;
  std::optional<std::string> PasswordFile;
  bool AnyLogon() const { return Project || User || PasswordFile; }
  SendOptions Send;
};

// The entries for the dialog. Without them the dialog is cancelled, which keeps the present logon.
struct Logon {
  std::optional<String> ProjectPath;  // nothing where the text box is locked
  String UserId;
  String Password;
};

// The component trims entries, and would then store a logon that doesn't open the project.
void RequireNoBlanksAround(const String& text, std::int32_t reason) {
  if (Trim(text) != text) throw CommandError(DataRefused, reason);
}

Logon ReadLogon(const MailboxOptions& options, const std::optional<MailboxRecord>& former) {
  if (former && options.Project) throw CommandError(WrongUse, TextNumber::kProjectFixed);
  Logon logon;
  if (!former) {
    if (!options.Project) throw CommandError(WrongUse, TextNumber::kProjectOptionMissing);
    logon.ProjectPath = AbsolutePath(*options.Project);
    RequireNoBlanksAround(*logon.ProjectPath, TextNumber::kProjectPathWithBlanks);
  }
  if (!options.User && !former) throw CommandError(WrongUse, TextNumber::kUserOptionMissing);
  logon.UserId = options.User ? ArgumentText(*options.User) : former->UserId;
  if (logon.UserId.empty()) throw CommandError(WrongUse, TextNumber::kUserOptionEmpty);
  logon.Password =
      ReadSecret(options.PasswordFile, ToUtf8(Runtime::TextOf(TextNumber::kPasswordPrompt, logon.UserId)));
  RequireNoBlanksAround(logon.UserId, TextNumber::kUserNameWithBlanks);
  RequireNoBlanksAround(logon.Password, TextNumber::kPasswordWithBlanks);
  return logon;
}

std::shared_ptr<OptionToolkit> MakeToolkit(std::optional<Logon> logon) {
  return std::make_shared<OptionToolkit>([logon](Form& form, UserInput& input) {
    if (!logon) {
      input.Escape();
      return;
    }
    if (logon->ProjectPath) TypeOption(form, input, u"txtTVSFileName", "--project", *logon->ProjectPath);
    TypeOption(form, input, u"txtUID", "--user", logon->UserId);
    TypeOption(form, input, u"txtPwd", "--password-file", logon->Password);
    input.Enter();
  });
}

// Runs the dialog and returns the mailbox name that its check gave.
String Configure(MailHandler& handler, bool add, const String& name, const ObjectRef& session,
                 const std::shared_ptr<OptionToolkit>& toolkit) {
  std::shared_ptr<RecordingToolkit> dialog;
  if (toolkit) {
    Runtime::InstallToolkit(toolkit);
  } else {
    dialog = InstallChosenToolkit();
  }
  String bound = name;
  String product;
  const FailureWatch watch;
  const bool configured{handler.MailHandler_Configure(add ? 1 : 0, bound, product, session)};
  // The component reports a change as configured even if its dialog was only closed, so the dialog is asked
  // as well.
  if (toolkit) {
    toolkit->Finish();
    if (!configured || !toolkit->Accepted())
      throw CommandError(CodeOf(watch, DataRefused), TextNumber::kNothingChanged);
  } else if (!dialog->Shown()) {
    throw CommandError(CodeOf(watch, TryAgain), Runtime::TextOf(TextNumber::kDialogNotOpened));
  } else if (!configured || !dialog->Hidden()) {
    throw CommandError(Cancelled, Runtime::TextOf(TextNumber::kMailboxCancelled));
  }
  return bound;
}

// Adding it again would overwrite the record, and a failure would delete the old one.
void RequireUnbound(const String& name) {
  const auto existing = FindMailbox(name);
  if (existing && existing->Complete())
    throw CommandError(DataRefused, TextNumber::kMailboxBound, existing->Name, existing->ProjectPath);
}

// An incomplete record can't be changed; adding the mailbox again replaces it.
MailboxRecord RequireComplete(const String& name) {
  MailboxRecord mailbox = RequireMailbox(name);
  if (!mailbox.Complete()) throw CommandError(DataRefused, TextNumber::kMailboxIncomplete, mailbox.Name);
  return mailbox;
}

int Store(const MailboxOptions& options, bool add) {
  RequireStores();
  String name = ArgumentText(options.Name);
  std::optional<MailboxRecord> former;
  if (!add) {
    former = RequireComplete(name);
    name = former->Name;
  }
  std::shared_ptr<OptionToolkit> toolkit;
  if (options.AnyLogon()) {
    toolkit = MakeToolkit(ReadLogon(options, former));
  } else if (!add && options.Send.Any()) {
    toolkit = MakeToolkit(std::nullopt);
  }
  const ObjectRef session = MakeSession(
      ResolveSendSettings(options.Send, former ? ReadSendSettings(former->ProjectPath) : SendSettings()));

  const Gateway::HandlerObject handler;
  const String bound = Configure(handler.Mail(), add, name, session, toolkit);
  if (add) RequireUnbound(bound);
  const FailureWatch watch;
  if (!handler.Mail().MailHandler_MboxUpdate(bound, session))
    throw CommandError(CodeOf(watch, TryAgain), TextNumber::kMailboxNotStored, bound);

  const MailboxRecord stored = RequireMailbox(bound);
  std::cout << "Mailbox " << TerminalLine(stored.Name) << " is bound to " << TerminalLine(stored.ProjectPath)
            << '\n';
  if (!EqualsIgnoreCase(stored.Name, name)) {
    std::cout << "A mailbox has the name of its project: " << TerminalLine(stored.Name)
              << " was stored instead of " << TerminalLine(name) << ".\n";
    if (former) std::cout << "The mailbox " << TerminalLine(name) << " was kept as well.\n";
  }
  return Done;
}

int Delete(const std::string& typedName, bool force) {
  const MailboxRecord mailbox = RequireMailbox(ArgumentText(typedName));
  const auto boxes = std::make_shared<OptionToolkit>([](Form&, UserInput&) {});
  Runtime::InstallToolkit(boxes);
  const Gateway::HandlerObject handler;
  const FailureWatch watch;  // for the boxes
  handler.Mail().MailHandler_MboxDelete(mailbox.Name);
  // Without a path there is no project whose settings could remain.
  if (boxes->BoxCount() > 0 && !force && !mailbox.ProjectPath.empty())
    throw CommandError(TryAgain, TextNumber::kMailboxKept, mailbox.Name);
  // The component removes the settings from the project; the record is its host's. A remaining record would
  // still accept mail, be listed, and block the project's name.
  Gateway::RemoveMailbox(mailbox.Name);
  std::cout << "Mailbox " << TerminalLine(mailbox.Name) << " is deleted.\n";
  return Done;
}

std::size_t Width(const std::string& text) {
  return FromUtf8(text).size();
}

std::string Padded(const std::string& text, std::size_t width) {
  return text + std::string(width - Width(text) + 2, ' ');
}

int List(bool json) {
  const std::vector<MailboxRecord> mailboxes = ReadMailboxes();
  if (json) {
    JsonArray list;
    for (const MailboxRecord& mailbox : mailboxes)
      list.Add(JsonObject()
                   .Add("name", mailbox.Name)
                   .Add("projectPath", mailbox.ProjectPath)
                   .Add("userId", mailbox.UserId));
    std::cout << list.Text() << '\n';
    return Done;
  }
  if (mailboxes.empty()) {
    std::cout << "There is no mailbox yet. Add one with tvmail mailbox add.\n";
    return Done;
  }
  std::vector<std::array<std::string, 3>> rows = {{"Name", "User", "Project"}};
  for (const MailboxRecord& mailbox : mailboxes)
    rows.push_back({TerminalLine(mailbox.Name), TerminalLine(mailbox.UserId),
                    TerminalLine(mailbox.ProjectPath) +
                        (mailbox.Complete() ? "" : "  (incomplete: add it again or delete it)")});
  std::size_t nameWidth = 0, userWidth = 0;
  for (const auto& [name, user, project] : rows) {
    nameWidth = std::max(nameWidth, Width(name));
    userWidth = std::max(userWidth, Width(user));
  }
  for (const auto& [name, user, project] : rows)
    std::cout << Padded(name, nameWidth) << Padded(user, userWidth) << project << '\n';
  return Done;
}

int ListForPostfix(const std::string& domain) {
  const PostfixMap map = MakePostfixMap(ReadMailboxes(), domain);
  std::cout << map.Text;
  for (const String& name : map.LeftOut)
    std::cerr << "tvmail: warning: mailbox " << TerminalLine(name)
              << " is not in the table: it is incomplete, or its name can't be part of an address\n";
  return Done;
}

void AddLogonOptions(CLI::App& command, MailboxOptions& options, bool add) {
  command.add_option("NAME", options.Name, "The mailbox's name")->required();
  command.add_option("--project", options.Project,
                     add ? "The project's file" : "Refused: a mailbox can't move to another project");
  command.add_option("--user", options.User, "The user who opens the project");
  command.add_option("--password-file", options.PasswordFile,
                     "File with that user's password, - for standard input; without it the terminal asks");
  options.Send.AddTo(command);
}

}  // namespace

void AddMailboxCommand(CLI::App& program, Invocation& invocation) {
  CLI::App* mailbox = program.add_subcommand("mailbox", "Bind mailboxes to projects");
  mailbox->require_subcommand(1);
  auto options = std::make_shared<MailboxOptions>();

  CLI::App* add = mailbox->add_subcommand("add", "Bind a mailbox to a project");
  AddLogonOptions(*add, *options, true);
  add->footer(
      "Without --project, --user and --password-file the dialog opens. The mailbox gets the project's name.");
  add->callback([&invocation, options] { invocation.Run = [options] { return Store(*options, true); }; });

  CLI::App* change = mailbox->add_subcommand("change", "Change a mailbox's logon or how its mail is sent");
  AddLogonOptions(*change, *options, false);
  change->footer("Without options the dialog opens. Settings that aren't given are kept.");
  change->callback([&invocation, options] { invocation.Run = [options] { return Store(*options, false); }; });

  CLI::App* remove = mailbox->add_subcommand("delete", "Delete a mailbox; its project is kept");
  remove->add_option("NAME", options->Name, "The mailbox's name")->required();
  auto force = std::make_shared<bool>(false);
  remove->add_flag("--force", *force, "Delete the record even if the project's settings can't be removed");
  remove->callback(
      [&invocation, options, force] { invocation.Run = [=] { return Delete(options->Name, *force); }; });

  AddMailboxShowCommand(*mailbox, invocation);

  CLI::App* list = mailbox->add_subcommand("list", "List the mailboxes");
  auto json = std::make_shared<bool>(false);
  list->add_flag("--json", *json, "Print one JSON array");
  auto domain = std::make_shared<std::optional<std::string>>();
  list->add_option("--postfix-map", *domain,
                   "Print a recipient table for Postfix: NAME@DOMAIN OK for each mailbox")
      ->type_name("DOMAIN")
      ->excludes("--json");
  list->callback([&invocation, json, domain] {
    invocation.Run = [=] { return *domain ? ListForPostfix(**domain) : List(*json); };
  });
}

}  // namespace Host
