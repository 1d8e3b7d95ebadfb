// tvmail project export: writes a project's discussions as an mbox or as HTML pages.
#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <memory>

#include "host/AbsolutePath.h"
#include "host/CommandError.h"
#include "host/commands/ProjectCommands.h"
#include "host/export/HtmlExport.h"
#include "host/export/MboxExport.h"
#include "host/export/StagedFolder.h"
#include "platform/TerminalText.h"

namespace Host {

namespace {

namespace fs = std::filesystem;

struct ExportOptions {
  std::string File;
  std::string Mbox, Html;
  std::optional<std::int32_t> Discussion;
  bool Force = false;
};

[[noreturn]] void RefusePath(const fs::path& path, std::int32_t text) {
  throw CommandError(DataRefused, text, FromUtf8(TerminalLine(FromUtf8(path.string()))));
}

// The path to write to. A link leads to what it names, which must be a file of the kind that is replaced.
fs::path Target(const std::string& typed) {
  const fs::path path(ToUtf8(AbsolutePath(typed)));
  const fs::path name = path.has_filename() ? path : path.parent_path();
  std::error_code error;
  const fs::path real = fs::canonical(name, error);
  return error ? name : real;
}

fs::path MboxTarget(const ExportOptions& options) {
  fs::path path = Target(options.Mbox);
  if (fs::exists(fs::symlink_status(path))) {
    if (!options.Force) RefusePath(path, TextNumber::kExportExists);
    if (!fs::is_regular_file(path)) RefusePath(path, TextNumber::kNoOrdinaryFile);
  }
  return path;
}

// An existing folder must be empty, or is replaced if it holds nothing but a former export.
fs::path HtmlTarget(const ExportOptions& options) {
  fs::path path = Target(options.Html);
  if (!fs::exists(fs::symlink_status(path))) return path;
  if (!fs::is_directory(path)) RefusePath(path, TextNumber::kExportForeign);
  for (const fs::directory_entry& entry : fs::directory_iterator(path)) {
    if (!entry.is_regular_file() || !IsHtmlExportFile(entry.path().filename().string()))
      RefusePath(path, TextNumber::kExportForeign);
    if (!options.Force) RefusePath(path, TextNumber::kExportExists);
  }
  return path;
}

void Report(std::size_t replies, const ProjectDescription& project, const fs::path& path) {
  std::cout << "Replies: " << replies << ", discussions: " << project.Discussions.size() << ", in "
            << TerminalLine(FromUtf8(path.string())) << '\n';
}

int Export(const ExportOptions& options) {
  const String path = ExistingProject(options.File);
  const ProjectAdministration projects = Administration();
  const ProjectDescription project = Selected(projects.Outline(path), options.Discussion);
  if (options.Html.empty()) {
    const fs::path target = MboxTarget(options);
    Runtime::StagedFile file(target.parent_path().string());
    const std::size_t replies = WriteMbox(file, projects, path, project);
    options.Force ? file.PublishOver(target.string()) : file.Publish(target.string());
    file.Keep();
    Runtime::SyncFolder(target.parent_path().string());
    Report(replies, project, target);
  } else {
    const fs::path target = HtmlTarget(options);
    StagedFolder folder(target.string());
    const std::size_t replies = WriteHtml(folder.Path(), projects, path, project);
    folder.Publish();
    Report(replies, project, target);
  }
  return Done;
}

}  // namespace

void AddProjectExportCommand(CLI::App& project, Invocation& invocation) {
  auto options = std::make_shared<ExportOptions>();
  CLI::App* command = AddProjectCommand(project, invocation, "export",
                                        "Write discussions as an mbox or as HTML pages", options, Export);
  CLI::Option_group* format = command->add_option_group("Format", "One of these is needed");
  format->add_option("--mbox", options->Mbox, "The mbox file to write, for mail programs")->type_name("FILE");
  format->add_option("--html", options->Html, "The folder to write pages into; index.html is the first")
      ->type_name("FOLDER");
  format->require_option(1);
  command->add_option("--discussion", options->Discussion, "Only the discussion of this number")
      ->type_name("NUMBER");
  command->add_flag("--force", options->Force, "Replace a file, or the pages of a former export");
}

}  // namespace Host
