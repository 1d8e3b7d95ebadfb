// tvmail project: makes projects with their users and discussions, and shows what is in them.
#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <memory>

#include "host/AbsolutePath.h"
#include "host/CommandError.h"
#include "host/Stores.h"
#include "host/commands/Command.h"
#include "host/terminal/Secret.h"
#include "platform/Json.h"
#include "platform/Object.h"
#include "platform/Services.h"
#include "platform/TerminalText.h"

namespace Host {

namespace {

constexpr StringView kAdministration = u"Talvane40.ProjectAdministration";

struct ProjectOptions {
  std::string File;
  std::string Name;
  std::string User;
  std::string Address;
  std::optional<std::string> PasswordFile;
  std::string Title;
  bool RefuseMail = false;
  bool Json = false;
};

Value Administer(StringView member, std::initializer_list<Value> arguments) {
  RequireStores();
  return CallWith(*Services().CreateByName(kAdministration), member, arguments);
}

// The same for a project that has to exist.
Value AdministerExisting(StringView member, const ProjectOptions& options,
                         std::initializer_list<Value> arguments) {
  std::error_code error;
  if (std::filesystem::status(options.File, error).type() == std::filesystem::file_type::not_found)
    throw CommandError(DataRefused, "there is no project file " + options.File +
                                        ": check the path, or make it by tvmail "
                                        "project create");
  return Administer(member, arguments);
}

int Create(const ProjectOptions& options) {
  RequireStores();
  const String path = AbsolutePath(options.File);
  const String password = ReadNewSecret(options.PasswordFile, "Password of " + options.User);
  Administer(u"CreateProject", {path, ArgumentText(options.Name), ArgumentText(options.User),
                                ArgumentText(options.Address), password});
  std::cout << "Project " << options.Name << " is in " << TerminalLine(path) << '\n';
  return Done;
}

int AddUser(const ProjectOptions& options) {
  const std::int32_t key = AdministerExisting(u"AddUser", options,
                                              {AbsolutePath(options.File), ArgumentText(options.User),
                                               ArgumentText(options.Address), !options.RefuseMail})
                               .ToInt32();
  std::cout << "User " << options.User << " has the key " << key << '\n';
  return Done;
}

int AddDiscussion(const ProjectOptions& options) {
  std::cout << AdministerExisting(u"AddDiscussion", options,
                                  {AbsolutePath(options.File), ArgumentText(options.Title)})
                   .ToInt32()
            << '\n';
  return Done;
}

JsonObject DescribeUser(const Array& user) {
  return JsonObject()
      .Add("key", user.at(0).ToInt32())
      .Add("name", user.at(1).ToString())
      .Add("email", user.at(2).ToString())
      .Add("mailAccepted", user.at(3).ToBool());
}

JsonObject DescribeDiscussion(const Array& discussion) {
  JsonArray replies;
  for (const Value& element : discussion.at(2).ToArray()) {
    const Array& reply = element.ToArray();
    replies.Add(JsonObject()
                    .Add("subject", reply.at(0).ToString())
                    .Add("body", reply.at(1).ToString())
                    .Add("user", reply.at(2).ToString())
                    .Add("at", reply.at(3).ToString()));
  }
  return JsonObject()
      .Add("number", discussion.at(0).ToInt32())
      .Add("title", discussion.at(1).ToString())
      .Add("replies", replies);
}

void PrintJson(const Array& project) {
  JsonArray users, discussions;
  for (const Value& user : project.at(1).ToArray()) users.Add(DescribeUser(user.ToArray()));
  for (const Value& discussion : project.at(2).ToArray())
    discussions.Add(DescribeDiscussion(discussion.ToArray()));
  std::cout << JsonObject()
                   .Add("name", project.at(0).ToString())
                   .Add("users", users)
                   .Add("discussions", discussions)
                   .Text()
            << '\n';
}

void PrintReply(const Array& reply) {
  std::cout << "  * " << TerminalText(reply.at(0).ToString()) << " (" << TerminalText(reply.at(2).ToString())
            << ", " << TerminalText(reply.at(3).ToString()) << ")\n";
  const std::string body = TerminalText(reply.at(1).ToString());
  for (std::size_t at = 0; at < body.size();) {
    const std::size_t end = std::min(body.find('\n', at), body.size());
    std::cout << "      " << body.substr(at, end - at) << '\n';
    at = end + 1;
  }
}

void PrintText(const Array& project) {
  std::cout << "Project " << TerminalText(project.at(0).ToString()) << "\n\nUsers\n";
  for (const Value& element : project.at(1).ToArray()) {
    const Array& user = element.ToArray();
    std::cout << "  " << user.at(0).ToInt32() << "  " << TerminalText(user.at(1).ToString()) << " <"
              << TerminalText(user.at(2).ToString()) << '>'
              << (user.at(3).ToBool() ? "\n" : "  mail refused\n");
  }
  for (const Value& element : project.at(2).ToArray()) {
    const Array& discussion = element.ToArray();
    std::cout << "\nDiscussion " << discussion.at(0).ToInt32() << ": "
              << TerminalText(discussion.at(1).ToString()) << '\n';
    if (discussion.at(2).ToArray().empty()) std::cout << "  (no replies)\n";
    for (const Value& reply : discussion.at(2).ToArray()) PrintReply(reply.ToArray());
  }
}

int Show(const ProjectOptions& options) {
  const Value project = AdministerExisting(u"Describe", options, {AbsolutePath(options.File)});
  options.Json ? PrintJson(project.ToArray()) : PrintText(project.ToArray());
  return Done;
}

}  // namespace

void AddProjectCommand(CLI::App& program, Invocation& invocation) {
  CLI::App* project = program.add_subcommand("project", "Make and show projects");
  project->require_subcommand(1);
  auto options = std::make_shared<ProjectOptions>();
  const auto add = [&](const char* name, const char* description, int (*run)(const ProjectOptions&)) {
    CLI::App* command = project->add_subcommand(name, description);
    command->add_option("FILE", options->File, "The project's file, by custom named *.TVS")->required();
    command->callback(
        [&invocation, options, run] { invocation.Run = [options, run] { return run(*options); }; });
    return command;
  };

  CLI::App* create = add("create", "Make a project and its owner", Create);
  create->add_option("--name", options->Name, "The project's name, which its mailbox will carry")->required();
  create->add_option("--user", options->User, "The owner, who opens the project")->required();
  create->add_option("--email", options->Address, "The owner's e-mail address");
  create->add_option("--password-file", options->PasswordFile,
                     "File with the owner's password, - for standard input; asked for without it");

  CLI::App* user = add("add-user", "Add a user who answers by mail", AddUser);
  user->add_option("--name", options->User, "The user's name")->required();
  user->add_option("--email", options->Address, "The user's e-mail address")->required();
  user->add_flag("--refuse-mail", options->RefuseMail, "Mail from this user is refused");

  CLI::App* discussion = add("add-discussion", "Add a discussion and print its number", AddDiscussion);
  discussion->add_option("--title", options->Title, "The discussion's title")->required();

  CLI::App* show = add("show", "Show users, discussions and their replies", Show);
  show->add_flag("--json", options->Json, "Print one JSON object");
}

}  // namespace Host
