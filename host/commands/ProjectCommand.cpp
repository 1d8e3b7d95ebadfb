// tvmail project: creates projects, adds discussions, and shows their content.
#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <sstream>

#include "host/AbsolutePath.h"
#include "host/CommandError.h"
#include "host/Stores.h"
#include "host/commands/ProjectCommands.h"
#include "host/terminal/Secret.h"
#include "platform/Services.h"
#include "platform/TerminalText.h"

namespace Host {

ProjectAdministration Administration() {
  RequireStores();
  return ProjectAdministration(Services().CreateByName(ProjectAdministration::kName));
}

String ExistingProject(const std::string& file) {
  std::error_code error;
  if (std::filesystem::status(file, error).type() == std::filesystem::file_type::not_found)
    throw CommandError(DataRefused, "there is no project file " + TerminalLine(FromUtf8(file)) +
                                        ": check the path, or create it with tvmail project create");
  return AbsolutePath(file);
}

namespace {

struct ProjectOptions {
  std::string File;
  std::string Name;
  std::string User;
  std::string Address;
  std::optional<std::string> PasswordFile;
  std::string Title;
  bool Json = false;
};

int Create(const ProjectOptions& options) {
  const ProjectAdministration projects = Administration();
  const String path = AbsolutePath(options.File);
  const String password = ReadNewSecret(
      options.PasswordFile, ToUtf8(Runtime::TextOf(TextNumber::kPasswordPrompt, FromUtf8(options.User))));
  projects.CreateProject(path, ArgumentText(options.Name), ArgumentText(options.User),
                         ArgumentText(options.Address), password);
  std::cout << "Project " << TerminalLine(FromUtf8(options.Name)) << " is in " << TerminalLine(path) << '\n';
  return Done;
}

int AddDiscussion(const ProjectOptions& options) {
  const String path = ExistingProject(options.File);
  std::cout << Administration().AddDiscussion(path, ArgumentText(options.Title)) << '\n';
  return Done;
}

JsonObject Describe(const DescribedReply& reply) {
  return JsonObject()
      .Add("subject", reply.Subject)
      .Add("body", reply.Body)
      .Add("user", reply.UserName)
      .Add("at", reply.At);
}

JsonObject Describe(const DescribedDiscussion& discussion);

template <class Element>
JsonArray DescribeAll(const std::vector<Element>& elements) {
  JsonArray array;
  for (const Element& element : elements) array.Add(Describe(element));
  return array;
}

JsonObject Describe(const DescribedDiscussion& discussion) {
  return JsonObject()
      .Add("number", discussion.Number)
      .Add("title", discussion.Title)
      .Add("replies", DescribeAll(discussion.Replies));
}

void PrintJson(const ProjectDescription& project) {
  std::cout << JsonObject()
                   .Add("name", project.Name)
                   .Add("users", UsersJson(project.Users))
                   .Add("discussions", DescribeAll(project.Discussions))
                   .Text()
            << '\n';
}

void Print(const DescribedReply& reply) {
  std::cout << "  * " << TerminalText(reply.Subject) << " (" << TerminalText(reply.UserName) << ", "
            << TerminalText(reply.At) << ")\n";
  std::istringstream body(TerminalText(reply.Body));
  for (std::string line; std::getline(body, line);) std::cout << "      " << line << '\n';
}

void PrintText(const ProjectDescription& project) {
  std::cout << "Project " << TerminalText(project.Name) << "\n\nUsers\n";
  for (const DescribedUser& user : project.Users)
    std::cout << "  " << user.Key << "  " << TerminalText(user.Name) << " <" << TerminalText(user.Address)
              << '>' << (user.MailAccepted ? "\n" : "  mail refused\n");
  for (const DescribedDiscussion& discussion : project.Discussions) {
    std::cout << "\nDiscussion " << discussion.Number << ": " << TerminalText(discussion.Title) << '\n';
    if (discussion.Replies.empty()) std::cout << "  (no replies)\n";
    for (const DescribedReply& reply : discussion.Replies) Print(reply);
  }
}

int Show(const ProjectOptions& options) {
  const String path = ExistingProject(options.File);
  const ProjectDescription project = Administration().Describe(path);
  options.Json ? PrintJson(project) : PrintText(project);
  return Done;
}

}  // namespace

void AddProjectCommand(CLI::App& program, Invocation& invocation) {
  CLI::App* project = program.add_subcommand("project", "Create and show projects");
  project->require_subcommand(1);
  auto options = std::make_shared<ProjectOptions>();
  const auto add = [&](const char* name, const char* description, int (*run)(const ProjectOptions&)) {
    return AddProjectCommand(*project, invocation, name, description, options, run);
  };

  CLI::App* create = add("create", "Create a project and its owner", Create);
  create->add_option("--name", options->Name, "The project's name, which its mailbox gets, too")->required();
  create->add_option("--user", options->User, "The owner, who opens the project")->required();
  create->add_option("--email", options->Address, "The owner's e-mail address");
  create->add_option("--password-file", options->PasswordFile,
                     "File with the owner's password, - for standard input; without it the terminal asks");

  AddProjectUserCommands(*project, invocation);

  CLI::App* discussion = add("add-discussion", "Add a discussion and print its number", AddDiscussion);
  discussion->add_option("--title", options->Title, "The discussion's title")->required();

  CLI::App* show = add("show", "Show users, discussions and their replies", Show);
  show->add_flag("--json", options->Json, "Print one JSON object");
}

}  // namespace Host
