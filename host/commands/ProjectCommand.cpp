// tvmail project: creates projects and adds discussions; other files add the other subcommands.
#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>

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

ProjectDescription Selected(ProjectDescription project, std::optional<std::int32_t> discussion) {
  if (!discussion) return project;
  std::erase_if(project.Discussions, [&](const auto& each) { return each.Number != *discussion; });
  if (project.Discussions.empty())
    throw CommandError(DataRefused, TextNumber::kDiscussionUnknown, FromUtf8(std::to_string(*discussion)));
  return project;
}

namespace {

struct ProjectOptions {
  std::string File;
  std::string Name;
  std::string User;
  std::string Address;
  std::optional<std::string> PasswordFile;
  std::string Title;
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
  AddProjectPostCommand(*project, invocation);
  AddProjectExportCommand(*project, invocation);

  CLI::App* discussion = add("add-discussion", "Add a discussion and print its number", AddDiscussion);
  discussion->add_option("--title", options->Title, "The discussion's title")->required();

  AddProjectShowCommand(*project, invocation);
}

}  // namespace Host
