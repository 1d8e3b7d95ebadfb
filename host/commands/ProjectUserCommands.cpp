// The users of a project: tvmail project add-user, set-user, remove-user, set-password and list-users.
#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <memory>

#include "host/CommandError.h"
#include "host/Mailboxes.h"
#include "host/commands/ProjectCommands.h"
#include "host/terminal/Secret.h"
#include "platform/TerminalText.h"

namespace Host {

namespace {

struct UserOptions {
  std::string File;
  std::string User;
  std::optional<std::string> Name, Address, Language, PasswordFile;
  bool AcceptMail = false;
  bool RefuseMail = false;
  bool Json = false;
};

std::string Shown(const DescribedUser& user) {
  return std::to_string(user.Key) + "  " + TerminalLine(user.Name) + " <" + TerminalLine(user.Address) + ">" +
         (user.Owner ? "  owner" : "") + (user.MailAccepted ? "" : "  mail refused") +
         (user.Language.empty() ? "" : "  " + TerminalLine(user.Language));
}

int Add(const UserOptions& options) {
  const String path = ExistingProject(options.File);
  const ProjectAdministration projects = Administration();
  const std::int32_t key = projects.AddUser(path, ArgumentText(options.User),
                                            ArgumentText(options.Address.value_or("")), !options.RefuseMail);
  std::cout << "User " << TerminalLine(FromUtf8(options.User)) << " has the key " << key << '\n';
  return Done;
}

// The mailboxes that open this project as this user, by their records. A record whose project can't be
// reached is of no project.
std::vector<String> MailboxesOf(const String& path, StringView user) {
  std::vector<String> names;
  for (const MailboxRecord& mailbox : ReadMailboxes()) {
    std::error_code error;
    if (EqualsIgnoreCase(mailbox.UserId, Trim(user)) &&
        std::filesystem::equivalent(ToUtf8(mailbox.ProjectPath), ToUtf8(path), error))
      names.push_back(mailbox.Name);
  }
  return names;
}

// Such a mailbox can't store replies any more until its logon is changed.
void WarnOfMailboxes(std::int32_t text, const String& path, StringView user) {
  for (const String& mailbox : MailboxesOf(path, user))
    std::cerr << "tvmail: " << TerminalLine(Runtime::TextOf(text, mailbox, user)) << '\n';
}

std::optional<String> OptionalText(const std::optional<std::string>& argument) {
  return argument ? std::optional(ArgumentText(*argument)) : std::nullopt;
}

int Change(const UserOptions& options) {
  UserChange change{.Name = OptionalText(options.Name),
                    .Address = OptionalText(options.Address),
                    .MailAccepted = {},
                    .Language = OptionalText(options.Language)};
  if (options.AcceptMail || options.RefuseMail) change.MailAccepted = options.AcceptMail;
  if (!change.Name && !change.Address && !change.MailAccepted && !change.Language)
    throw CommandError(WrongUse, TextNumber::kNoChangeGiven);
  const String path = ExistingProject(options.File), user = ArgumentText(options.User);
  const ProjectAdministration projects = Administration();
  projects.ChangeUser(path, user, change);
  for (const DescribedUser& present : projects.Outline(path).Users)
    if (EqualsIgnoreCase(present.Name, Trim(change.Name.value_or(user))))
      std::cout << Shown(present) << '\n' << std::flush;
  if (change.Name && !EqualsIgnoreCase(Trim(*change.Name), Trim(user)))
    WarnOfMailboxes(TextNumber::kMailboxKeepsUser, path, user);
  return Done;
}

int Remove(const UserOptions& options) {
  const String path = ExistingProject(options.File), user = ArgumentText(options.User);
  Administration().RemoveUser(path, user);
  std::cout << "User " << TerminalLine(user) << " is removed. The replies of this user are kept.\n";
  return Done;
}

int SetPassword(const UserOptions& options) {
  const String path = ExistingProject(options.File), user = ArgumentText(options.User);
  const ProjectAdministration projects = Administration();
  const String password =
      ReadNewSecret(options.PasswordFile, ToUtf8(Runtime::TextOf(TextNumber::kPasswordPrompt, user)));
  projects.SetPassword(path, user, password);
  std::cout << "User " << TerminalLine(user) << " opens the project with the new password.\n" << std::flush;
  WarnOfMailboxes(TextNumber::kMailboxKeepsPassword, path, user);
  return Done;
}

int List(const UserOptions& options) {
  const String path = ExistingProject(options.File);
  const std::vector<DescribedUser> users = Administration().Outline(path).Users;
  if (options.Json) {
    std::cout << UsersJson(users).Text() << '\n';
  } else {
    for (const DescribedUser& user : users) std::cout << Shown(user) << '\n';
  }
  return Done;
}

}  // namespace

JsonArray UsersJson(const std::vector<DescribedUser>& users) {
  JsonArray array;
  for (const DescribedUser& user : users)
    array.Add(JsonObject()
                  .Add("key", user.Key)
                  .Add("name", user.Name)
                  .Add("email", user.Address)
                  .Add("mailAccepted", user.MailAccepted)
                  .Add("owner", user.Owner)
                  .Add("language", user.Language));
  return array;
}

void AddProjectUserCommands(CLI::App& project, Invocation& invocation) {
  auto options = std::make_shared<UserOptions>();
  const auto add = [&](const char* name, const char* description, int (*run)(const UserOptions&)) {
    return AddProjectCommand(project, invocation, name, description, options, run);
  };
  const auto addUser = [&](CLI::App* command) {
    command->add_option("--user", options->User, "The user's name, in any case")->required();
  };

  CLI::App* create = add("add-user", "Add a user who answers by mail", Add);
  create->add_option("--name", options->User, "The user's name")->required();
  create->add_option("--email", options->Address, "The user's e-mail address")->required();
  create->add_flag("--refuse-mail", options->RefuseMail,
                   "The user takes no part by mail: gets none, and answers are refused");

  CLI::App* change = add("set-user", "Change a user; what isn't given is kept", Change);
  addUser(change);
  change->add_option("--name", options->Name, "The new name");
  change->add_option("--email", options->Address, "The new e-mail address");
  change->add_option("--language", options->Language,
                     "The language of mail to this user, such as de; empty for the machine's");
  CLI::Option* accept = change->add_flag(
      "--accept-mail", options->AcceptMail,
      "The user gets replies by mail and may answer; also if delivery reports had stopped it");
  change
      ->add_flag("--refuse-mail", options->RefuseMail,
                 "The user takes no part by mail: gets none, and answers are refused")
      ->excludes(accept);

  CLI::App* remove = add("remove-user", "Remove a user; replies are kept with the user's name", Remove);
  addUser(remove);

  CLI::App* password = add("set-password", "Set the password by which a user opens the project", SetPassword);
  addUser(password);
  password->add_option("--password-file", options->PasswordFile,
                       "File with the password, - for standard input; without it the terminal asks");
  password->footer("A mailbox that opens the project as this user keeps the former password; it is named.");

  add("list-users", "List the users", List)->add_flag("--json", options->Json, "Print one JSON array");
}

}  // namespace Host
