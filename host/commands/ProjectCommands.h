// ProjectCommands: what the subcommands of "tvmail project" share, and the functions that add them.
#pragma once

#include <CLI/CLI.hpp>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/commands/Command.h"
#include "platform/Json.h"
#include "platform/contracts/ProjectAdministration.h"

namespace Host {

using namespace Platform;

// Raises a CommandError if the stores don't exist, and 429 without the sibling.
ProjectAdministration Administration();

// The whole path of a project file. Raises a CommandError if it doesn't exist.
String ExistingProject(const std::string& file);

// The project with one discussion alone, or with all of them if no number is given. Raises a CommandError if
// there is no such discussion.
ProjectDescription Selected(ProjectDescription project, std::optional<std::int32_t> discussion);

JsonArray UsersJson(const std::vector<DescribedUser>& users);

// Adds a subcommand that takes a project's file, which is stored in options->File.
template <class Options>
CLI::App* AddProjectCommand(CLI::App& project, Invocation& invocation, const char* name,
                            const char* description, const std::shared_ptr<Options>& options,
                            int (*run)(const Options&)) {
  CLI::App* command = project.add_subcommand(name, description);
  command->add_option("FILE", options->File, "The project's file, usually named *.TVS")->required();
  command->callback(
      [&invocation, options, run] { invocation.Run = [options, run] { return run(*options); }; });
  return command;
}

void AddProjectUserCommands(CLI::App& project, Invocation& invocation);
void AddProjectShowCommand(CLI::App& project, Invocation& invocation);
void AddProjectPostCommand(CLI::App& project, Invocation& invocation);
void AddProjectExportCommand(CLI::App& project, Invocation& invocation);

}  // namespace Host
