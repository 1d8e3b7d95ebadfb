// tvmail status: what became of each mailbox's mail, for administrators and monitoring.
#include <pwd.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "gateway/service/HeldSummary.h"
#include "gateway/service/MailboxLock.h"
#include "gateway/service/MailboxStatus.h"
#include "gateway/service/NoticeSummary.h"
#include "host/CommandError.h"
#include "host/Mailboxes.h"
#include "host/commands/Command.h"
#include "host/commands/ConfigurationOption.h"
#include "platform/Json.h"
#include "platform/TerminalText.h"
#include "platform/UtcText.h"

namespace Host {
namespace {

using Gateway::HeldSummary;
using Gateway::MailboxStatus;
using Gateway::NoticeSummary;
using Gateway::Outcome;
using Gateway::StatusTime;

constexpr const char* kNotes =
    R"(Shows what became of the mails of each mailbox, by tvmail serve, fetch and deliver: the last delivery, the last
failure with its reason, today's mails by outcome, and the mail that is held. Also what waits to be sent, what is
tried in vain, what only another system user can send, what was given up in the last 7 days, and which addresses get
no mail after three delivery reports (tvmail project set-user --email or --accept-mail sends to them again). Without a
name, all mailboxes of the configuration and of this machine are shown. It reads files only, so it works while the
service runs and without it.

With --json it prints an object with the list mailboxes; each has name, lastDelivered, lastFailure (UTC, as
"2024-05-01T09:30:00Z", or ""), reason (of the last failure), counts (delivered, duplicate, refused, held, retry; of
today), held, oldestHeld (a time, or ""), unsentNotices, deferredNotices (of these, tried in vain), oldestAttempt (a
time, or ""), deferredReason, givenUpNotices, givenUpAt, givenUpAddress, givenUpReason (of the last one),
stoppedAddresses (a list), otherUsers (a list of user, uid and unsent: what only another system user can send, by a
profile of that user's outbound e-mail), and sendingProblem (why nothing can be sent, or "").

Exit codes, for monitoring:
  0   all is well
  75  the last attempt of a mailbox failed, a mail has been held for longer than --held-hours, a mail has been
      tried in vain for longer than --notice-hours, what waits can't be sent by the settings, or the project
      can't be read
  78  the configuration isn't valid, or there is no such mailbox)";

constexpr int kHeldHours = 168;
constexpr int kNoticeHours = 4;

struct StatusOptions {
  ConfigurationOption Configuration;
  bool Json = false;
  int HeldHours = kHeldHours;
  int NoticeHours = kNoticeHours;
};

struct Row {
  String Name;
  MailboxStatus Status;
  HeldSummary Held;
  NoticeSummary Notices;

  // Mail waits that can't be sent, or it can't be told.
  bool SendsNothing() const {
    return Notices.Failed || (Notices.State.Unsent > 0 && !Notices.Problem.empty());
  }
};

std::string TextOf(const std::optional<StatusTime>& time) {
  return time ? Platform::UtcText(*time) : std::string();
}

std::size_t CountOf(const MailboxStatus& status, Outcome outcome) {
  const auto found = status.Counts.find(outcome);
  return found == status.Counts.end() ? 0 : found->second;
}

std::vector<Row> ReadRows(const ConfigurationOption& option) {
  const Gateway::Configuration configuration = option.ReadIfAny();
  std::vector<Row> rows;
  for (const String& typed : option.NamesOrAll(configuration)) {
    const auto* mailbox = configuration.Find(typed);
    const String name = mailbox ? mailbox->Name : RequireMailbox(typed).Name;
    rows.push_back({name, Gateway::ReadStatus(name), Gateway::ReadHeldSummary(name),
                    Gateway::ReadNoticeSummary(name, configuration.NoticesOf(name))});
  }
  return rows;
}

JsonArray ListOf(const std::vector<String>& texts) {
  JsonArray list;
  for (const String& text : texts) list.Add(text);
  return list;
}

// The system users beside this one whose profiles send what waits.
std::vector<NoticesOfUser> OtherUsers(const NoticeState& state) {
  std::vector<NoticesOfUser> others = state.OfUsers;
  std::erase_if(others, [](const NoticesOfUser& user) { return user.Uid == static_cast<int>(getuid()); });
  return others;
}

// A user who was removed from the system has no name.
String NameOf(const NoticesOfUser& user) {
  const passwd* entry = getpwuid(static_cast<uid_t>(user.Uid));
  return FromUtf8(entry ? entry->pw_name : std::to_string(user.Uid));
}

JsonArray OtherUsersJson(const NoticeState& state) {
  JsonArray list;
  for (const NoticesOfUser& user : OtherUsers(state))
    list.Add(JsonObject().Add("user", NameOf(user)).Add("uid", user.Uid).Add("unsent", user.Unsent));
  return list;
}

void PrintJson(const std::vector<Row>& rows) {
  JsonArray mailboxes;
  for (const auto& [name, status, held, notices] : rows) {
    JsonObject counts;
    for (const auto& [outcome, word] : Gateway::kOutcomeWords) counts.Add(word, CountOf(status, outcome));
    mailboxes.Add(JsonObject()
                      .Add("name", name)
                      .Add("lastDelivered", FromUtf8(TextOf(status.LastDelivered)))
                      .Add("lastFailure", FromUtf8(TextOf(status.LastFailure)))
                      .Add("reason", status.Reason)
                      .Add("counts", counts)
                      .Add("held", held.Count)
                      .Add("oldestHeld", FromUtf8(TextOf(held.Oldest)))
                      .Add("unsentNotices", notices.State.Unsent)
                      .Add("deferredNotices", notices.State.Deferred)
                      .Add("oldestAttempt", notices.State.OldestAttempt)
                      .Add("deferredReason", notices.State.DeferredReason)
                      .Add("givenUpNotices", notices.State.GivenUp)
                      .Add("givenUpAt", notices.State.GivenUpAt)
                      .Add("givenUpAddress", notices.State.GivenUpAddress)
                      .Add("givenUpReason", notices.State.GivenUpReason)
                      .Add("stoppedAddresses", ListOf(notices.State.StoppedAddresses))
                      .Add("otherUsers", OtherUsersJson(notices.State))
                      .Add("sendingProblem", notices.Problem));
  }
  std::cout << JsonObject().Add("mailboxes", mailboxes).Text() << '\n';
}

std::string Or(const std::string& text, const char* otherwise) {
  return text.empty() ? otherwise : text;
}

void PrintNotices(const NoticeSummary& notices) {
  const NoticeState& state = notices.State;
  std::cout << "  unsent          " << state.Unsent;
  if (state.Deferred > 0)
    std::cout << ", " << state.Deferred << " tried in vain since " << TerminalLine(state.OldestAttempt)
              << ": " << TerminalLine(state.DeferredReason);
  std::cout << '\n';
  for (const NoticesOfUser& user : OtherUsers(state))
    std::cout << "  another user's  " << user.Unsent << " of the unsent can be sent only by a profile of "
              << TerminalLine(NameOf(user)) << ": run tvmail notify as that user\n";
  if (state.GivenUp > 0)
    std::cout << "  given up        " << state.GivenUp << " in 7 days, the last one "
              << TerminalLine(state.GivenUpAt)
              << (state.GivenUpAddress.empty() ? "" : " for " + TerminalLine(state.GivenUpAddress)) << ": "
              << TerminalLine(state.GivenUpReason) << '\n';
  for (const String& address : state.StoppedAddresses)
    std::cout << "  gets no mail    " << TerminalLine(address) << '\n';
  if (!notices.Problem.empty()) std::cout << "  can't send      " << TerminalLine(notices.Problem) << '\n';
}

void PrintText(const std::vector<Row>& rows) {
  if (rows.empty()) std::cout << "There is no mailbox yet. Add one with tvmail mailbox add.\n";
  for (const Row& row : rows) {
    const auto& [name, status, held, notices] = row;
    const auto server = Gateway::MailboxLock::Holder(name);
    std::cout << TerminalLine(name) << "  " << (status.Failing || row.SendsNothing() ? "failing" : "ok")
              << (server ? "  served by process " + *server : "") << '\n'
              << "  last delivered  " << Or(TextOf(status.LastDelivered), "never") << '\n'
              << "  last failure    " << Or(TextOf(status.LastFailure), "never")
              << (status.Reason.empty() ? "" : ": " + TerminalLine(status.Reason)) << '\n'
              << "  today           ";
    const char* separator = "";
    for (const auto& [outcome, word] : Gateway::kOutcomeWords) {
      std::cout << separator << CountOf(status, outcome) << ' ' << word;
      separator = ", ";
    }
    std::cout << "\n  held            " << held.Count
              << (held.Oldest ? ", the oldest since " + TextOf(held.Oldest) : "") << '\n';
    PrintNotices(notices);
  }
}

int Show(const StatusOptions& options) {
  const std::vector<Row> rows = ReadRows(options.Configuration);
  if (options.Json)
    PrintJson(rows);
  else
    PrintText(rows);
  const auto now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
  const auto heldLimit = now - std::chrono::hours(options.HeldHours);
  // As times of DueNotice, which are ordered as texts.
  const String noticeLimit = FromUtf8(Platform::UtcText(now - std::chrono::hours(options.NoticeHours)));
  for (const Row& row : rows) {
    const NoticeState& notices = row.Notices.State;
    const bool late = notices.Deferred > 0 && notices.OldestAttempt < noticeLimit;
    const bool heldLong = row.Held.Oldest && *row.Held.Oldest < heldLimit;
    if (row.Status.Failing || heldLong || late || row.SendsNothing()) return TryAgain;
  }
  return Done;
}

}  // namespace

void AddStatusCommand(CLI::App& program, Invocation& invocation) {
  CLI::App* command = program.add_subcommand("status", "Show what became of mailboxes' mail");
  const auto options = std::make_shared<StatusOptions>();
  options->Configuration.AddTo(*command);
  command->add_flag("--json", options->Json, "Print a JSON object");
  command
      ->add_option("--held-hours", options->HeldHours, "How long mail may be held before the exit code tells")
      ->check(CLI::Range(1, 24 * 3650))
      ->capture_default_str();
  command
      ->add_option("--notice-hours", options->NoticeHours,
                   "How long a mail may be tried in vain before the exit code tells")
      ->check(CLI::Range(1, 24 * 5))
      ->capture_default_str();
  command->footer(kNotes);
  command->callback([options, &invocation] { invocation.Run = [options] { return Show(*options); }; });
}

}  // namespace Host
