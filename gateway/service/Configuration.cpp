#include "gateway/service/Configuration.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <map>

#include "gateway/notices/SmtpHost.h"
#include "gateway/service/MailboxSection.h"
#include "gateway/service/SmtpSection.h"
#include "platform/Failure.h"
#include "platform/NoticeTexts.h"
#include "platform/ProgramTexts.h"
#include "runtime/DurableFile.h"
#include "runtime/Folders.h"
#include "runtime/Texts.h"

namespace Gateway {
namespace {

namespace TextNumber = Platform::TextNumber;
using Kind = SettingsNode::Kind;
using Platform::FromUtf8;
using Runtime::TextOf;

// Some thousands of mailboxes.
constexpr std::size_t kLargestFile = std::size_t{1} << 20;

[[noreturn]] void Raise(std::int32_t number, const String& description) {
  throw Platform::Failure(number, u"Gateway", description);
}

std::string ReadTrustedFile(const std::string& path) {
  try {
    Runtime::SmallFile file = Runtime::ReadSmallFile(path, kLargestFile);
    // Whoever may write it could make a mailbox take any mail.
    if ((file.Mode & (S_IWGRP | S_IWOTH)) == 0) return std::move(file.Content);
  } catch (const Platform::Failure& failure) {
    if (failure.Number() != Platform::FailureNumber::PathNotFound) throw;
    Raise(failure.Number(), TextOf(TextNumber::kConfigurationMissing, FromUtf8(path)));
  }
  Raise(Platform::FailureNumber::DeviceFailed, TextOf(TextNumber::kConfigurationOpen, FromUtf8(path)));
}

void RaiseIfAny(const SettingsProblems& problems) {
  if (!problems.Any()) return;
  String description;
  for (const std::string& line : problems.Lines())
    description.append(description.empty() ? u"" : u"\n").append(FromUtf8(line));
  Raise(Platform::FailureNumber::RefusedInput, description);
}

SettingsNode Parse(const std::string& path) {
  const std::string bytes = ReadTrustedFile(path);
  SettingsProblems problems(path);
  try {
    return ParseSettings(bytes);
  } catch (const SettingsError& error) {
    problems.Add(error.Place(), TextOf(TextNumber::kNoToml, FromUtf8(error.Text())));
  }
  RaiseIfAny(problems);
  return {};
}

// The members of the root: the section of defaults, and the sections of mailboxes and of servers.
struct Sections {
  const SettingsNode* Defaults = nullptr;
  std::vector<const SettingsNode*> Mailboxes, Servers;
};

Sections SectionsOf(const SettingsNode& root, SettingsProblems& problems) {
  Sections sections;
  const auto isTable = [](const SettingsNode& node) { return node.Type == Kind::Table; };
  for (const SettingsNode& member : root.Members) {
    auto* const list = member.Key == "mailbox" ? &sections.Mailboxes
                       : member.Key == "smtp"  ? &sections.Servers
                                               : nullptr;
    if (member.Key == "defaults" && isTable(member))
      sections.Defaults = &member;
    else if (list && member.Type == Kind::List && std::ranges::all_of(member.Members, isTable))
      for (const SettingsNode& section : member.Members) list->push_back(&section);
    else
      problems.Add(member.Place, TextOf(TextNumber::kSectionUnknown, FromUtf8(member.Key)));
  }
  return sections;
}

std::vector<SmtpServer> ReadServers(const std::vector<const SettingsNode*>& sections,
                                    SettingsProblems& problems, SettingsProblems& warnings) {
  std::vector<SmtpServer> servers;
  std::map<std::pair<std::string, int>, FilePlace> places;
  for (const SettingsNode* section : sections) {
    servers.push_back(ReadSmtpServer(*section, problems, warnings));
    const SmtpServer& server = servers.back();
    const auto host = ParseSmtpHost(FromUtf8(server.Host));
    if (!host) continue;
    const auto [first, isNew] = places.emplace(std::pair(host->Name, server.Port), section->Place);
    if (!isNew)
      problems.Add(section->Place, TextOf(TextNumber::kSmtpServerTwice, FromUtf8(server.Host),
                                          FromUtf8(std::to_string(first->second.Line))));
  }
  return servers;
}

}  // namespace

const MailboxSettings* Configuration::Find(StringView mailbox) const {
  const auto found = std::ranges::find_if(Mailboxes, [&](const MailboxSettings& settings) {
    return Platform::EqualsIgnoreCase(settings.Name, mailbox);
  });
  return found == Mailboxes.end() ? nullptr : &*found;
}

const NoticeSettings& Configuration::NoticesOf(StringView mailbox) const {
  const MailboxSettings* settings = Find(mailbox);
  return settings ? settings->Notices : DefaultNotices;
}

std::string ConfigurationPath() {
  return Runtime::HomePath() + "/tvmail.toml";
}

Configuration ReadConfiguration(const std::string& path) {
  const SettingsNode root = Parse(path);
  SettingsProblems problems(path), warnings(path);
  const Sections sections = SectionsOf(root, problems);
  DefaultSettings defaults;
  if (sections.Defaults) defaults = ReadDefaults(*sections.Defaults, problems);
  defaults.Notices.Servers = ReadServers(sections.Servers, problems, warnings);
  Configuration configuration{path, defaults.Delivery, defaults.Notices, {}, {}};
  std::map<String, FilePlace> names;
  for (const SettingsNode* section : sections.Mailboxes) {
    MailboxSettings mailbox = ReadMailbox(*section, defaults, problems, warnings);
    if (!mailbox.Name.empty()) {
      const auto [first, isNew] = names.emplace(Platform::FoldCase(mailbox.Name), section->Place);
      if (!isNew)
        problems.Add(section->Place, TextOf(TextNumber::kMailboxTwice, mailbox.Name,
                                            FromUtf8(std::to_string(first->second.Line))));
    }
    configuration.Mailboxes.push_back(std::move(mailbox));
  }
  RaiseIfAny(problems);
  configuration.Warnings = warnings.Lines();
  return configuration;
}

DeliverySettings SettingsOf(StringView mailbox) {
  try {
    const std::string path = ConfigurationPath();
    // The usual case: a failure would load the texts only to describe it.
    if (access(path.c_str(), F_OK) != 0 && errno == ENOENT) return {};
    const Configuration configuration = ReadConfiguration(path);
    const MailboxSettings* settings = configuration.Find(mailbox);
    return settings ? settings->Delivery : configuration.Defaults;
  } catch (const Platform::Failure& failure) {
    if (failure.Number() != Platform::FailureNumber::PathNotFound) throw;
    return {};
  }
}

}  // namespace Gateway
