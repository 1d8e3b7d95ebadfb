// tvmail held: lists, shows, tries again and drops the mails that were refused and kept.
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cerrno>
#include <ctime>
#include <iostream>
#include <iterator>
#include <map>
#include <memory>
#include <new>

#include "gateway/delivery/HeldList.h"
#include "gateway/delivery/MailProcessor.h"
#include "gateway/service/Configuration.h"
#include "gateway/sources/StopSignal.h"
#include "host/CommandError.h"
#include "host/Mailboxes.h"
#include "host/commands/Command.h"
#include "mime/Limits.h"
#include "platform/Json.h"
#include "platform/ProgramTexts.h"
#include "platform/UtcText.h"
#include "runtime/ProcessServices.h"
#include "runtime/SystemReason.h"

namespace Host {
namespace {

using Gateway::HeldDetails;
using Gateway::HeldPlace;

constexpr const char* kNotes =
    R"(A mail that is refused is kept with its reason, as it came, by deliver --hold and by serve. Each has an id, by
which the commands here name it; the first digits of an id are enough if no other mail's id begins so. A mail that
is held for several mailboxes has one id, and a command is for each of them.

The mails are in the folder held of the home folder, in a Maildir for each mailbox. They are removed after 90 days
unless set otherwise.)";

constexpr const char* kRetryNotes =
    R"(The mails are processed again by the rules of their mailbox, the oldest first: use it after a user was added or
a setting changed. What is delivered, or was before, leaves the held mails. What is still refused stays with its
new reason. With --post the mails are handed over whoever sent them: strangers, programs, empty replies, without a
proof of the origin, of any size. Of a mail of more than 128 MB only the header is held, so it stays refused.

Exit codes: 0 no mail was refused, 65 a mail is still refused, 75 a mail has to be tried again, or a signal ended
the work before the last one.)";

struct HeldOptions {
  std::vector<std::string> Names;  // ids, or mailboxes
  bool All = false;
  bool Json = false;
  bool Post = false;
  bool Raw = false;
};

// A mailbox that is neither set up nor has held mail is a mistake in its name.
std::vector<HeldPlace> MailsOfMailbox(const std::vector<std::string>& names) {
  if (names.empty()) return Gateway::HeldMails(std::nullopt);
  const String mailbox = Trim(ArgumentText(names.front()));
  std::vector<HeldPlace> places = Gateway::HeldMails(mailbox);
  if (places.empty()) RequireMailbox(mailbox);
  return places;
}

// The mail of an id, or of its beginning, among all held mails: one place for each mailbox for which it is
// held.
std::vector<HeldPlace> MailOf(const std::string& id, const std::vector<HeldPlace>& all) {
  const String shown = FromUtf8(TerminalLine(FromUtf8(id)));
  if (id.empty() || id.size() > 16 || id.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos)
    throw CommandError(WrongUse, TextNumber::kHeldIdMalformed, shown);
  const std::string beginning = ToUtf8(FoldCase(FromUtf8(id)));
  std::vector<HeldPlace> places;
  std::ranges::copy_if(all, std::back_inserter(places),
                       [&](const HeldPlace& place) { return place.Id.starts_with(beginning); });
  if (places.empty()) throw CommandError(DataRefused, TextNumber::kHeldIdUnknown, shown);
  if (std::ranges::any_of(places, [&](const HeldPlace& place) { return place.Id != places.front().Id; }))
    throw CommandError(WrongUse, TextNumber::kHeldIdAmbiguous, shown);
  return places;
}

// All names are looked up before anything is done to a mail.
std::vector<HeldPlace> ChosenMails(const HeldOptions& options) {
  if (options.All) {
    if (options.Names.size() > 1) throw CommandError(WrongUse, TextNumber::kHeldAllWithIds);
    return MailsOfMailbox(options.Names);
  }
  if (options.Names.empty()) throw CommandError(WrongUse, TextNumber::kHeldIdsMissing);
  const std::vector<HeldPlace> all = Gateway::HeldMails(std::nullopt);
  std::vector<HeldPlace> chosen;
  for (const std::string& id : options.Names) {
    for (HeldPlace& place : MailOf(id, all)) {
      const bool named =
          std::ranges::any_of(chosen, [&](const HeldPlace& other) { return other.Path == place.Path; });
      if (!named) chosen.push_back(std::move(place));
    }
  }
  return chosen;
}

std::string LocalTime(const HeldPlace& place) {
  std::tm parts{};
  localtime_r(&place.Received, &parts);
  std::array<char, 40> text{};
  return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M", &parts)};
}

std::string UtcTime(const HeldPlace& place) {
  return Platform::UtcText(std::chrono::sys_seconds(std::chrono::seconds(place.Received)));
}

int List(const HeldOptions& options) {
  const std::vector<HeldPlace> places = MailsOfMailbox(options.Names);
  JsonArray mails;
  for (const HeldPlace& place : places) {
    const HeldDetails details = Gateway::DetailsOf(place);
    if (options.Json) {
      mails.Add(JsonObject()
                    .Add("id", FromUtf8(place.Id))
                    .Add("mailbox", details.Why.Mailbox)
                    .Add("received", FromUtf8(UtcTime(place)))
                    .Add("from", details.From)
                    .Add("subject", details.Subject)
                    .Add("reason", details.Why.Reason));
      continue;
    }
    std::cout << place.Id << "  " << LocalTime(place) << "  " << TerminalLine(details.Why.Mailbox) << "  "
              << TerminalLine(details.From) << "  " << TerminalLine(details.Subject) << "\n    "
              << TerminalLine(details.Why.Reason) << '\n';
  }
  if (options.Json) std::cout << mails.Text() << '\n';
  if (!options.Json && places.empty()) std::cout << ToUtf8(Runtime::TextOf(TextNumber::kNothingHeld)) << '\n';
  return Done;
}

[[noreturn]] void RefuseGone(const HeldPlace& place) {
  throw CommandError(DataRefused, TextNumber::kHeldGone, FromUtf8(place.Id));
}

// The start of the bytes that is escaped at once: up to a line end where there is one, else up to a character
// and never between CR and LF.
std::string_view NextPiece(std::string_view bytes) {
  constexpr std::size_t kLongest = std::size_t{1} << 16;
  constexpr std::size_t kLongestCharacter = 4;
  if (bytes.size() <= kLongest) return bytes;
  const std::size_t lineEnd = bytes.rfind('\n', kLongest - 1);
  if (lineEnd != bytes.npos) return bytes.substr(0, lineEnd + 1);
  std::size_t end = kLongest;
  while (end > kLongest - kLongestCharacter && (static_cast<unsigned char>(bytes[end]) & 0xC0) == 0x80) --end;
  return bytes.substr(0, bytes[end - 1] == '\r' ? end - 1 : end);
}

// A mail may be large, also a line of it, and its escapes six times as large.
void PrintEscaped(std::string_view bytes) {
  while (!bytes.empty() && std::cout) {
    const std::string_view piece = NextPiece(bytes);
    std::cout << TerminalText(std::string(piece));
    bytes.remove_prefix(piece.size());
  }
}

int Show(const HeldOptions& options) {
  const std::vector<HeldPlace> places = MailOf(options.Names.front(), Gateway::HeldMails(std::nullopt));
  const std::optional<std::string> bytes = Gateway::BytesOf(places.front());
  if (!bytes) RefuseGone(places.front());
  if (options.Raw || isatty(STDOUT_FILENO) != 1) {
    std::cout.write(bytes->data(), static_cast<std::streamsize>(bytes->size()));
    return Done;
  }
  for (const HeldPlace& place : places) {
    const Gateway::HeldReason why = Gateway::DetailsOf(place).Why;
    std::cout << LocalTime(place) << "  " << TerminalLine(why.Mailbox) << ": " << TerminalLine(why.Reason)
              << '\n';
  }
  std::cout << '\n';
  PrintEscaped(*bytes);
  return Done;
}

// As the mailbox's mail is delivered otherwise.
Gateway::DeliverySettings SettingsOf(const HeldOptions& options, const String& mailbox) {
  Gateway::DeliverySettings settings = Gateway::SettingsOf(mailbox);
  if (options.Post)
    settings.Policy = {.PostStrangers = true,
                       .PostAutomatic = true,
                       .PostEmpty = true,
                       .RequireAuthenticated = {},
                       .SizeLimit = Mime::kLargestMail};
  return settings;
}

// Processes a held mail again. Nothing if it isn't held any longer: another process was faster.
std::optional<Gateway::MailResult> RetryMail(const HeldPlace& place, const Gateway::HeldReason& former,
                                             Gateway::MailProcessor& processor) {
  Gateway::RawMail raw{place.Id, {}, {}, Gateway::Outcome::Retry, former.EnvelopeSender};
  try {
    std::optional<std::string> bytes = Gateway::BytesOf(place);
    if (!bytes) return std::nullopt;
    raw.Bytes = std::move(*bytes);
    if (former.Rule == Gateway::kHeaderOnlyRule) {
      raw.Fault = ToUtf8(former.Reason);
      raw.FaultOutcome = Gateway::Outcome::Refused;
    }
  } catch (const std::bad_alloc&) {
    raw.Fault = Runtime::SystemReason(ENOMEM);
  } catch (const Failure& failure) {
    raw.Fault = ToUtf8(failure.Description());
  }
  Gateway::MailResult result = processor.Process(std::move(raw));
  if (result.Result == Gateway::Outcome::Delivered || result.Result == Gateway::Outcome::Duplicate)
    Gateway::RemoveHeld(place);
  if (result.Result == Gateway::Outcome::Refused)
    Gateway::ChangeReason(place, {result.Rule, result.Reason, former.EnvelopeSender, former.Mailbox});
  return result;
}

int Retry(const HeldOptions& options) {
  const std::vector<HeldPlace> places = ChosenMails(options);
  Runtime::InstallToolkit(nullptr);
  Gateway::CatchStopSignals();
  std::map<std::string, std::unique_ptr<Gateway::MailProcessor>> processors;  // by their folder
  bool refused = false, again = false;
  for (const HeldPlace& place : places) {
    if (Gateway::StopWanted()) return TryAgain;
    const Gateway::HeldReason former = Gateway::DetailsOf(place).Why;
    auto& processor = processors[place.Folder];
    if (!processor)
      processor =
          std::make_unique<Gateway::MailProcessor>(former.Mailbox, SettingsOf(options, former.Mailbox));
    const std::optional<Gateway::MailResult> result = RetryMail(place, former, *processor);
    if (!result) {
      std::cerr << "tvmail: " << TerminalText(Runtime::TextOf(TextNumber::kHeldGone, FromUtf8(place.Id)))
                << '\n';
      continue;
    }
    refused = refused || result->Result == Gateway::Outcome::Refused;
    again = again || result->Result == Gateway::Outcome::Retry;
    std::cout << place.Id << "  " << TerminalLine(former.Mailbox) << "  "
              << Gateway::SpokenWordOf(result->Result);
    // What the component says of a reply that was stored is no reason.
    const bool settled =
        result->Result == Gateway::Outcome::Delivered || result->Result == Gateway::Outcome::Duplicate;
    const String& reason = result->Reason.empty() && !settled ? result->Failure : result->Reason;
    if (!reason.empty()) std::cout << ": " << TerminalLine(reason);
    std::cout << std::endl;
  }
  if (again) return TryAgain;
  return refused ? DataRefused : Done;
}

int Drop(const HeldOptions& options) {
  for (const HeldPlace& place : ChosenMails(options)) {
    const String mailbox = Gateway::DetailsOf(place).Why.Mailbox;
    if (!Gateway::RemoveHeld(place)) RefuseGone(place);
    std::cout << place.Id << "  " << TerminalLine(mailbox) << "  dropped\n";
  }
  return Done;
}

}  // namespace

void AddHeldCommand(CLI::App& program, Invocation& invocation) {
  CLI::App* held = program.add_subcommand("held", "List, show, try again or drop refused mails");
  held->require_subcommand(1);
  held->footer(kNotes);
  const auto options = std::make_shared<HeldOptions>();
  const auto run = [&invocation, options](int (*act)(const HeldOptions&)) {
    return [&invocation, options, act] { invocation.Run = [options, act] { return act(*options); }; };
  };

  CLI::App* list = held->add_subcommand("list", "List the held mails, the oldest first, with their reasons");
  list->add_option("MAILBOX", options->Names, "Only those of this mailbox")->expected(0, 1);
  list->add_flag("--json", options->Json,
                 "Print one JSON array: id, mailbox, received, from, subject, reason");
  list->callback(run(List));

  CLI::App* show = held->add_subcommand("show", "Print a held mail");
  show->add_option("ID", options->Names, "The mail's id, or its first digits")->required()->expected(1);
  show->add_flag("--raw", options->Raw, "Print the mail as it came also on a terminal");
  show->footer(
      "On a terminal the reason is on top, and control characters are escaped. Otherwise the mail is printed "
      "as it came.");
  show->callback(run(Show));

  CLI::App* retry = held->add_subcommand("retry", "Process held mails again");
  retry->add_option("ID", options->Names, "The mails' ids; with --all a mailbox");
  retry->add_flag("--all", options->All, "All held mails, or all of the mailbox");
  retry->add_flag("--post", options->Post, "Hand over what the rules of the mailbox refuse");
  retry->footer(kRetryNotes);
  retry->callback(run(Retry));

  CLI::App* drop = held->add_subcommand("drop", "Remove held mails for good");
  drop->add_option("ID", options->Names, "The mails' ids")->required();
  drop->callback(run(Drop));
}

}  // namespace Host
