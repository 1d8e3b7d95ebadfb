// tvmail project show: shows users, discussions and replies. Only a few replies are in memory at a time.
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <sstream>

#include "host/commands/ProjectCommands.h"
#include "host/terminal/Pager.h"
#include "platform/TerminalText.h"

namespace Host {

namespace {

struct ShowOptions {
  std::string File;
  std::optional<std::int32_t> Discussion;
  bool Json = false;
};

std::string ReplyJson(const DescribedReply& reply) {
  return JsonObject()
      .Add("subject", reply.Subject)
      .Add("body", reply.Body)
      .Add("user", reply.UserName)
      .Add("at", reply.At)
      .Text();
}

// One object on one line, written in pieces.
void PrintJson(const ProjectAdministration& projects, const String& path, const ProjectDescription& project) {
  std::cout << "{\"name\":" << JsonValue(project.Name).Text()
            << ",\"users\":" << UsersJson(project.Users).Text() << ",\"discussions\":[";
  const char* between = "";
  for (const DescribedDiscussion& discussion : project.Discussions) {
    std::cout << between << "{\"number\":" << discussion.Number
              << ",\"title\":" << JsonValue(discussion.Title).Text() << ",\"replies\":[";
    between = "";
    projects.EachReply(path, discussion.Number, [&](const DescribedReply& reply) {
      std::cout << between << ReplyJson(reply);
      between = ",";
    });
    std::cout << "]}";
    between = ",";
  }
  std::cout << "]}\n";
}

std::string ReplyText(const DescribedReply& reply) {
  std::string text = "  * " + TerminalText(reply.Subject) + " (" + TerminalText(reply.UserName) + ", " +
                     TerminalText(reply.At) + ")\n";
  std::istringstream body(TerminalText(reply.Body));
  for (std::string line; std::getline(body, line);) text += "      " + line + "\n";
  return text;
}

void PrintUsers(const PageWriter& write, const ProjectDescription& project) {
  write("Project " + TerminalText(project.Name) + "\n\nUsers\n");
  for (const DescribedUser& user : project.Users)
    write("  " + std::to_string(user.Key) + "  " + TerminalText(user.Name) + " <" +
          TerminalText(user.Address) + (user.MailAccepted ? ">\n" : ">  mail refused\n"));
}

int Show(const ShowOptions& options) {
  const String path = ExistingProject(options.File);
  const ProjectAdministration projects = Administration();
  const ProjectDescription project = Selected(projects.Outline(path), options.Discussion);
  if (options.Json) {
    PrintJson(projects, path, project);
    return Done;
  }
  ShowPaged(Terminal(), [&](const PageWriter& write) {
    if (!options.Discussion) PrintUsers(write, project);
    for (const DescribedDiscussion& discussion : project.Discussions) {
      write((options.Discussion ? "" : "\n") + ("Discussion " + std::to_string(discussion.Number)) + ": " +
            TerminalText(discussion.Title) + "\n");
      bool empty = true;
      projects.EachReply(path, discussion.Number, [&](const DescribedReply& reply) {
        write(ReplyText(reply));
        empty = false;
      });
      if (empty) write("  (no replies)\n");
    }
  });
  return Done;
}

}  // namespace

void AddProjectShowCommand(CLI::App& project, Invocation& invocation) {
  auto options = std::make_shared<ShowOptions>();
  CLI::App* command = AddProjectCommand(project, invocation, "show",
                                        "Show users, discussions and their replies", options, Show);
  command
      ->add_option("--discussion", options->Discussion, "Only the discussion of this number, without users")
      ->type_name("NUMBER");
  command->add_flag("--json", options->Json, "Print one JSON object");
  command->footer("On a terminal the text is shown with the pager in PAGER, or less or more.");
}

}  // namespace Host
