// tvmail project post: stores a reply that a user writes on this machine.
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <memory>

#include "host/AbsolutePath.h"
#include "host/CommandError.h"
#include "host/OutboundSettings.h"
#include "host/commands/ProjectCommands.h"
#include "host/terminal/EditedText.h"
#include "host/terminal/Terminal.h"
#include "platform/NoticeTexts.h"
#include "platform/TerminalText.h"
#include "runtime/DurableFile.h"
#include "runtime/RegistryStore.h"

namespace Host {

namespace {

// In bytes. A character takes up to three.
constexpr std::size_t kLargestText = kLongestReply * 3 + 16;

constexpr std::size_t kMostNames = 10;  // of users, in one message

constexpr const char* kNotes =
    R"(On a terminal without a TEXTFILE, the editor in VISUAL or EDITOR opens. An empty text cancels.

The other users who take mail are told of the reply by the settings of the system user who posts (tvmail outbound),
if these are complete, usable and enabled; otherwise no user is notified. tvmail notify or tvmail serve sends the mails.
Standard error says how many users will be told, or why none, and who isn't, since three mails were not delivered.)";

struct PostOptions {
  std::string File;
  std::int32_t Discussion = 0;
  std::string User;
  std::string Text;
};

std::string ReadStandardInput() {
  std::string bytes;
  for (char c; bytes.size() <= kLargestText && std::cin.get(c);) bytes += c;
  if (std::cin.bad()) throw CommandError(TryAgain, TextNumber::kStandardInputClosed);
  return bytes;
}

// Raises a CommandError for a blank text, which cancels, and for one that isn't UTF-8.
String ReplyText(std::string bytes, ExitCode blank) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (bytes.starts_with(kByteOrderMark)) bytes.erase(0, kByteOrderMark.size());
  if (bytes.find_first_not_of(" \t\r\n") == std::string::npos)
    throw CommandError(blank, TextNumber::kNothingPosted);
  if (!IsUtf8(bytes)) throw CommandError(DataRefused, TextNumber::kReplyNotUtf8);
  return FromUtf8(bytes);
}

// The users who take mail, but the author.
struct Readers {
  std::size_t Told = 0;
  std::vector<String> Stopped;  // not told, since three mails were not delivered
};

// Checks discussion and user first, so that nobody writes a text in vain.
Readers RequireDiscussionAndUser(const ProjectAdministration& projects, const String& path,
                                 const PostOptions& options, const String& user) {
  const ProjectDescription project = Selected(projects.Outline(path), options.Discussion);
  const DescribedUser* author = nullptr;
  Readers readers;
  for (const DescribedUser& known : project.Users) {
    if (EqualsIgnoreCase(known.Name, Trim(user)))
      author = &known;
    else if (known.MailAccepted && !known.Address.empty() && !known.Stopped)
      ++readers.Told;
    else if (known.MailAccepted && known.Stopped)
      readers.Stopped.push_back(known.Name);
  }
  if (!author) throw CommandError(DataRefused, TextNumber::kUserUnknown, user);
  return readers;
}

OutboundSettings SettingsOfUser() {
  std::error_code error;
  const bool hasStore =
      std::filesystem::exists(ToUtf8(Runtime::RegistryStore::FileOf(Hive::CurrentUser)), error);
  // A store that can't be read is a failure: nobody would be told of a reply that is to be sent.
  return hasStore || error ? ReadOutboundSettings() : OutboundSettings();
}

void Say(const String& text) {
  std::cerr << "tvmail: " << TerminalLine(text) << '\n';
}

void SayWhoIsTold(const OutboundSettings& settings, const Readers& readers) {
  if (!settings.Complete()) return Say(Runtime::TextOf(TextNumber::kNobodyIsTold));
  if (const String problem = settings.Problem(); !problem.empty())
    return Say(Runtime::TextOf(TextNumber::kOutboundUnusable, problem));
  Say(readers.Told == 0 ? Runtime::TextOf(TextNumber::kNobodyTakesMail)
                        : Runtime::TextOf(TextNumber::kWillBeTold, FromUtf8(std::to_string(readers.Told))));
  if (readers.Stopped.empty()) return;
  String names;
  for (std::size_t i = 0; i < std::min(readers.Stopped.size(), kMostNames); ++i)
    names += (i == 0 ? u"" : u", ") + readers.Stopped[i];
  if (readers.Stopped.size() > kMostNames) names += u"...";
  Say(Runtime::TextOf(TextNumber::kUsersStopped, names));
}

int Post(const PostOptions& options) {
  const String path = ExistingProject(options.File), user = ArgumentText(options.User);
  const ProjectAdministration projects = Administration();
  const Readers readers = RequireDiscussionAndUser(projects, path, options, user);
  const OutboundSettings settings = SettingsOfUser();
  const bool usable = settings.Complete() && settings.Problem().empty();
  const std::optional<NoticeRoute> route = usable ? std::optional(settings.Route()) : std::nullopt;
  const auto store = [&](const String& text) {
    std::cout << projects.AddReply(path, options.Discussion, user, text, route) << '\n' << std::flush;
    SayWhoIsTold(settings, readers);
  };
  if (options.Text.empty() && Terminal().Interactive()) {
    EditedText edited(kLargestText);
    const bool blank = edited.Bytes().find_first_not_of(" \t\r\n") == std::string::npos;
    try {
      store(ReplyText(edited.Bytes(), Cancelled));
    } catch (...) {
      if (!blank) edited.Keep();
      throw;
    }
  } else if (options.Text.empty() || options.Text == "-") {
    store(ReplyText(ReadStandardInput(), DataRefused));
  } else {
    const std::string file = ToUtf8(AbsolutePath(options.Text));
    store(ReplyText(Runtime::ReadSmallFile(file, kLargestText).Content, DataRefused));
  }
  return Done;
}

}  // namespace

void AddProjectPostCommand(CLI::App& project, Invocation& invocation) {
  auto options = std::make_shared<PostOptions>();
  CLI::App* command = AddProjectCommand(project, invocation, "post",
                                        "Store a user's reply and print its number", options, Post);
  command->add_option("--discussion", options->Discussion, "The discussion's number")
      ->type_name("NUMBER")
      ->required();
  command->add_option("--user", options->User, "The user who writes it")->required();
  command->add_option("TEXTFILE", options->Text,
                      "File with the text in UTF-8; - for standard input, which is read without a file, too");
  command->footer(kNotes);
}

}  // namespace Host
