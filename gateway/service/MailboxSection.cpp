#include "gateway/service/MailboxSection.h"

#include <array>

#include "gateway/policy/AuthenticationResults.h"
#include "mime/Limits.h"
#include "platform/NoticeTexts.h"
#include "platform/ProgramTexts.h"
#include "runtime/MailAddress.h"
#include "runtime/RegistryStore.h"
#include "runtime/Texts.h"

namespace Gateway {
namespace {

namespace TextNumber = Platform::TextNumber;
using Platform::FromUtf8;
using Runtime::TextOf;
using Words = std::span<const std::string_view>;

constexpr std::array<std::string_view, 3> kSources = {"maildir", "imap", "pop3"};
constexpr std::array<std::string_view, 3> kSecurities = {"tls", "starttls", "none"};
constexpr std::array<std::string_view, 4> kAfter = {"mark", "move", "delete", "keep"};
constexpr std::array<std::string_view, 2> kPolicies = {"refuse", "post"};

constexpr int kLargestPort = 65535;
constexpr int kLongestHeldDays = 3650;
constexpr int kLongestPollSeconds = 3600;
constexpr int kMostNoticesPerMinute = 100'000;

// The settings of sources, and for which they are.
constexpr struct {
  std::string_view Key;
  bool Maildir, Imap, Pop3;
} kSourceKeys[] = {
    {"folder", true, false, false},      {"host", false, true, true},
    {"port", false, true, true},         {"security", false, true, true},
    {"user", false, true, true},         {"password-file", false, true, true},
    {"ca-file", false, true, true},      {"after-success", false, true, true},
    {"imap-folder", false, true, false}, {"move-to", false, true, false},
    {"poll-seconds", true, true, true},
};

template <typename T>
void Assign(T& target, std::optional<T> value) {
  if (value) target = std::move(*value);
}

void ReadPolicy(SettingsSection& section, std::string_view key, bool& post) {
  if (const auto choice = section.Choice(key, kPolicies)) post = *choice == 1;
}

void ReadDelivery(SettingsSection& section, DeliverySettings& delivery) {
  PolicySettings& policy = delivery.Policy;
  ReadPolicy(section, "strangers", policy.PostStrangers);
  ReadPolicy(section, "automatic", policy.PostAutomatic);
  ReadPolicy(section, "empty", policy.PostEmpty);
  if (const auto server = section.Text("require-authenticated", true)) {
    policy.RequireAuthenticated = FromUtf8(*server);
    if (!server->empty() && !IsServerName(*server))
      section.Refuse("require-authenticated",
                     TextOf(TextNumber::kSettingNotUsable, u"require-authenticated"));
  }
  constexpr int kLargestMegabytes = Mime::kLargestMail >> 20;
  if (const auto megabytes = section.Number("size-limit", 1, kLargestMegabytes))
    policy.SizeLimit = static_cast<std::size_t>(*megabytes) << 20;
  Assign(delivery.HeldDays, section.Number("held-days", 1, kLongestHeldDays));
}

void ReadNotices(SettingsSection& section, NoticeSettings& notices, DeliverySettings& delivery) {
  Assign(notices.Send, section.Flag("notices"));
  Assign(notices.AnswerSenders, section.Flag("answer-senders"));
  Assign(notices.PerMinute, section.Number("notices-per-minute", 1, kMostNoticesPerMinute));
  delivery.AnswerSenders = notices.AnswerSenders;
}

void ReadAddress(SettingsSection& section, MailboxSettings& mailbox) {
  const auto typed = section.Text("address");
  if (!typed) return;
  const String address = Platform::Trim(FromUtf8(*typed));
  if (const String fault = Runtime::AddressFault(address); !fault.empty())
    section.Refuse("address", TextOf(TextNumber::kMailAddressUnusable, address, fault));
  mailbox.Notices.Address = address;
  mailbox.Delivery.Address = address;
}

// "keep" is POP3's word for mail that stays on the server.
AfterSuccess AfterOf(std::size_t word) {
  constexpr AfterSuccess kMeanings[] = {AfterSuccess::Mark, AfterSuccess::Move, AfterSuccess::Delete,
                                        AfterSuccess::Mark};
  return kMeanings[word];
}

void ReadSource(SettingsSection& section, QueueSettings& source) {
  Assign(source.Host, section.Text("host"));
  Assign(source.Port, section.Number("port", 1, kLargestPort));
  if (const auto choice = section.Choice("security", kSecurities))
    source.Security = static_cast<QueueSecurity>(*choice);
  Assign(source.User, section.Text("user"));
  Assign(source.PasswordFile, section.Path("password-file"));
  Assign(source.CaFile, section.Path("ca-file"));
  if (const auto word = section.Choice("after-success", kAfter)) source.After = AfterOf(*word);
  Assign(source.Mailbox, section.Text("imap-folder"));
  Assign(source.MoveTo, section.Text("move-to"));
  if (const auto seconds = section.Number("poll-seconds", 1, kLongestPollSeconds))
    source.PollInterval = std::chrono::seconds(*seconds);
}

std::optional<QueueKind> ReadKind(SettingsSection& section, std::optional<QueueKind> fallback) {
  const auto choice = section.Choice("source", kSources);
  return choice ? static_cast<QueueKind>(*choice) : fallback;
}

void RefuseForeignKeys(SettingsSection& section, std::optional<QueueKind> kind) {
  for (const auto& [key, maildir, imap, pop3] : kSourceKeys) {
    if (!section.Has(key)) continue;
    if (!kind)
      section.Refuse(key, TextOf(TextNumber::kSettingWithoutSource, FromUtf8(key)));
    else if (!(*kind == QueueKind::Maildir ? maildir : *kind == QueueKind::Imap ? imap : pop3))
      section.Refuse(key, TextOf(TextNumber::kSettingNotForSource, FromUtf8(key),
                                 FromUtf8(kSources[static_cast<std::size_t>(*kind)])));
  }
}

void Require(SettingsSection& section, std::string_view key, bool present) {
  // A wrong value has its own problem.
  if (!present && !section.Has(key)) section.Refuse(key, TextOf(TextNumber::kSettingMissing, FromUtf8(key)));
}

void RequireSource(SettingsSection& section, const QueueSettings& source) {
  if (source.Kind == QueueKind::Maildir) {
    Require(section, "folder", !source.Folder.empty());
    return;
  }
  Require(section, "host", !source.Host.empty());
  Require(section, "user", !source.User.empty());
  Require(section, "password-file", !source.PasswordFile.empty());
  const bool moves = source.After == AfterSuccess::Move;
  if (source.Kind == QueueKind::Pop3) {
    if (moves)
      section.Refuse("after-success",
                     TextOf(TextNumber::kSettingNotListed, u"after-success", u"keep, delete"));
    return;
  }
  if (moves && source.MoveTo.empty() && !section.Has("move-to"))
    section.Refuse("after-success", TextOf(TextNumber::kSettingMissing, u"move-to"));
  if (!moves && section.Has("move-to")) section.Refuse("move-to", TextOf(TextNumber::kMoveToUnused));
}

}  // namespace

DefaultSettings ReadDefaults(const SettingsNode& table, SettingsProblems& problems) {
  SettingsSection section(table, problems);
  DefaultSettings defaults;
  ReadDelivery(section, defaults.Delivery);
  ReadNotices(section, defaults.Notices, defaults.Delivery);
  ReadSource(section, defaults.Source);
  defaults.Kind = ReadKind(section, std::nullopt);
  section.RefuseUnknown();
  return defaults;
}

MailboxSettings ReadMailbox(const SettingsNode& table, const DefaultSettings& defaults,
                            SettingsProblems& problems, SettingsProblems& warnings) {
  SettingsSection section(table, problems);
  MailboxSettings mailbox{{}, {}, defaults.Delivery, defaults.Notices};
  QueueSettings source = defaults.Source;
  if (const auto name = section.Text("name")) mailbox.Name = Platform::Trim(FromUtf8(*name));
  Require(section, "name", !mailbox.Name.empty());
  if (!mailbox.Name.empty() && !Runtime::RegistryStore::IsKeyName(mailbox.Name))
    section.Refuse("name", TextOf(TextNumber::kSettingNotUsable, u"name"));
  ReadDelivery(section, mailbox.Delivery);
  ReadNotices(section, mailbox.Notices, mailbox.Delivery);
  ReadAddress(section, mailbox);
  ReadSource(section, source);
  Assign(source.Folder, section.Path("folder"));
  const std::optional<QueueKind> kind = ReadKind(section, defaults.Kind);
  section.RefuseUnknown();
  RefuseForeignKeys(section, kind);
  if (!kind) return mailbox;
  source.Kind = *kind;
  RequireSource(section, source);
  if (source.Kind != QueueKind::Maildir) section.WarnOfPasswordFile(source.PasswordFile, warnings);
  mailbox.Source = std::move(source);
  return mailbox;
}

}  // namespace Gateway
