// tvmail mailbox show: a mailbox's record, how its project's mail is sent, and what is missing.
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "gateway/notices/ProjectSending.h"
#include "gateway/service/Configuration.h"
#include "host/CommandError.h"
#include "host/Mailboxes.h"
#include "host/SendingSession.h"
#include "host/commands/MailboxShowCommand.h"
#include "platform/Json.h"
#include "platform/TerminalText.h"

namespace Host {

namespace {

struct ShownMailbox {
  MailboxRecord Record;
  SendSettings Send;
  const char* Transport = "";
  String Command;                    // of the MAPI profile of this system user
  String Address;                    // where replies go
  std::vector<const char*> Missing;  // by the names of the JSON object; "password" too, which isn't shown
  String Problem;                    // why the project's settings can't be read
};

void FindMissing(ShownMailbox& mailbox) {
  const auto require = [&](const String& value, const char* name) {
    if (value.empty()) mailbox.Missing.push_back(name);
  };
  require(mailbox.Record.ProjectPath, "projectPath");
  require(mailbox.Record.UserId, "userId");
  require(mailbox.Record.EncodedPassword, "password");
  if (mailbox.Record.ProjectPath.empty() || !mailbox.Problem.empty()) return;
  require(mailbox.Send.Transport, "transport");
  if (mailbox.Transport == std::string_view("mapi")) require(mailbox.Send.MapiProfile, "profile");
  if (mailbox.Transport == std::string_view("smtp")) require(mailbox.Send.HostName, "host");
  if (*mailbox.Transport) require(mailbox.Address, "address");
}

ShownMailbox Read(const String& name) {
  ShownMailbox mailbox{
      .Record = RequireMailbox(name), .Send = {}, .Command = {}, .Address = {}, .Missing = {}, .Problem = {}};
  if (!mailbox.Record.ProjectPath.empty()) {
    try {
      mailbox.Send = ReadSendSettings(mailbox.Record.ProjectPath);
      // That of tvmail.toml comes first.
      mailbox.Address = Gateway::ReadMailboxSending(mailbox.Record.ProjectPath,
                                                    Gateway::SettingsOf(mailbox.Record.Name).Address)
                            .Address;
    } catch (const Failure& failure) {
      mailbox.Problem = failure.Description();
    }
  }
  if (!mailbox.Send.Transport.empty())
    mailbox.Transport = mailbox.Send.Transport == MapiTransportName() ? "mapi" : "smtp";
  if (mailbox.Transport == std::string_view("mapi"))
    mailbox.Command = Gateway::CommandOfProfile(mailbox.Send.MapiProfile);
  FindMissing(mailbox);
  return mailbox;
}

void PrintJson(const ShownMailbox& mailbox) {
  JsonArray missing;
  for (const char* name : mailbox.Missing) missing.Add(FromUtf8(name));
  std::cout << JsonObject()
                   .Add("name", mailbox.Record.Name)
                   .Add("projectPath", mailbox.Record.ProjectPath)
                   .Add("userId", mailbox.Record.UserId)
                   .Add("transport", FromUtf8(mailbox.Transport))
                   .Add("profile", mailbox.Send.MapiProfile)
                   .Add("command", mailbox.Command)
                   .Add("host", mailbox.Send.HostName)
                   .Add("address", mailbox.Address)
                   .Add("realName", mailbox.Send.RealName)
                   .Add("missing", missing)
                   .Add("problem", mailbox.Problem)
                   .Text()
            << '\n';
}

void Line(const char* label, const String& value) {
  std::cout << label << (value.empty() ? "(none)" : TerminalLine(value)) << '\n';
}

void PrintText(const ShownMailbox& mailbox) {
  Line("Mailbox:      ", mailbox.Record.Name);
  Line("Project:      ", mailbox.Record.ProjectPath);
  Line("User:         ", mailbox.Record.UserId);
  Line("Transport:    ", FromUtf8(mailbox.Transport));
  if (mailbox.Transport == std::string_view("mapi")) {
    Line("MAPI profile: ", mailbox.Send.MapiProfile);
    Line("Command:      ", mailbox.Command.empty() ? String(Gateway::kUsualCommand) : mailbox.Command);
  } else {
    Line("SMTP host:    ", mailbox.Send.HostName);
    Line("Real name:    ", mailbox.Send.RealName);
  }
  Line("Address:      ", mailbox.Address);
  if (!mailbox.Problem.empty()) Line("Problem:      ", mailbox.Problem);
  if (mailbox.Missing.empty()) return;
  std::string missing;
  for (const char* name : mailbox.Missing) missing += (missing.empty() ? "" : ", ") + std::string(name);
  // By a profile, only an address can be missing.
  const bool byProfile = mailbox.Transport == std::string_view("mapi");
  std::cout << "Missing:      " << missing
            << (!mailbox.Record.Complete() ? ": add the mailbox again with tvmail mailbox add\n"
                : byProfile                ? ": set it in the mailbox's section of tvmail.toml\n"
                                           : ": set it with tvmail mailbox change\n");
}

}  // namespace

void AddMailboxShowCommand(CLI::App& mailbox, Invocation& invocation) {
  CLI::App* command =
      mailbox.add_subcommand("show", "Show a mailbox, how its project's mail is sent, and what is missing");
  auto name = std::make_shared<std::string>();
  auto json = std::make_shared<bool>(false);
  command->add_option("NAME", *name, "The mailbox's name")->required();
  command->add_flag("--json", *json, "Print one JSON object");
  command->footer("The password isn't shown. tvmail check tries whether it opens the project.");
  command->callback([&invocation, name, json] {
    invocation.Run = [name, json] {
      const ShownMailbox shown = Read(ArgumentText(*name));
      *json ? PrintJson(shown) : PrintText(shown);
      return Done;
    };
  });
}

}  // namespace Host
