#include "gateway/notices/CommandTransport.h"

#include <sysexits.h>

#include <algorithm>
#include <array>
#include <optional>

#include "gateway/notices/CommandRun.h"
#include "gateway/notices/ForeignText.h"
#include "mime/MailHeader.h"
#include "platform/Failure.h"
#include "platform/NoticeTexts.h"
#include "platform/ProgramTexts.h"
#include "runtime/MailAddress.h"
#include "runtime/Texts.h"

namespace Gateway {
namespace {

namespace TextNumber = Platform::TextNumber;
using Kind = SendResult::Kind;
using Platform::FromUtf8;
using Runtime::TextOf;

constexpr int kNotExecutable = 126, kNotFound = 127;  // exit codes of the shell

// The raw value of the only field that names recipients if it is To; nothing otherwise.
std::optional<std::string> OnlyRecipients(std::string_view mail) {
  constexpr std::array<std::string_view, 6> kFields = {"to",        "cc",        "bcc",
                                                       "resent-to", "resent-cc", "resent-bcc"};
  std::optional<std::string> found;
  bool within = false;  // in the field To
  while (!mail.empty() && mail.front() != '\n' && !mail.starts_with("\r\n")) {
    const std::size_t end = std::min(mail.find('\n'), mail.size() - 1) + 1;
    const std::string_view line = mail.substr(0, end);
    mail.remove_prefix(end);
    if (line.front() == ' ' || line.front() == '\t') {
      if (within) *found += line;
      continue;
    }
    const std::size_t colon = std::min(line.find(':'), line.size());
    const String name =
        Platform::FoldCase(FromUtf8(line.substr(0, line.find_last_not_of(" \t", colon - 1) + 1)));
    const auto field = std::ranges::find(kFields, Platform::ToUtf8(name));
    within = field == kFields.begin();
    if (field == kFields.end()) continue;
    if (!within || found) return std::nullopt;
    found = line.substr(std::min(colon + 1, line.size()));
  }
  return found;
}

bool NamesOnly(const OutgoingMail& mail) {
  const auto value = OnlyRecipients(mail.Bytes);
  const auto address = value ? Mime::OnlyAddress(*value) : std::nullopt;
  return address && Platform::EqualsIgnoreCase(Runtime::CanonicalAddress(*address),
                                               Runtime::CanonicalAddress(FromUtf8(mail.Recipient)));
}

Kind KindOf(int exitCode) {
  switch (exitCode) {
    case EX_OK:
      return Kind::Sent;
    case EX_DATAERR:
    case EX_NOUSER:
    case EX_NOHOST:
      return Kind::Refused;
    case EX_USAGE:
    case EX_NOINPUT:
    case EX_OSERR:
    case EX_OSFILE:
    case EX_CANTCREAT:
    case EX_IOERR:
    case EX_NOPERM:
    case EX_CONFIG:
    case kNotExecutable:
    case kNotFound:
      return Kind::Unreachable;
    default:  // a server that can't be reached and one that refuses the mail have the same code in some
              // programs
      return Kind::Deferred;
  }
}

// The command's first word; empty if a shell has to find out which program it is.
std::string ProgramOf(const std::string& command) {
  const std::string word = command.substr(0, command.find_first_of(" \t\n"));
  return word.find_first_of("\"'\\$`=;&|<>(){}*?[]~#!") == std::string::npos ? word : std::string();
}

[[noreturn]] void Raise(const String& reason) {
  throw Platform::Failure(Platform::FailureNumber::DeviceFailed, u"Gateway.MailTransport", reason);
}

}  // namespace

CommandTransport::CommandTransport(StringView command, std::chrono::milliseconds longest)
    : command_(Platform::ToUtf8(Platform::Trim(command))), longest_(longest) {
  if (command_.empty()) command_ = "sendmail -t -i";
}

SendResult CommandTransport::Send(const OutgoingMail& mail) {
  try {
    return Run(mail);
  } catch (const Platform::Failure& failure) {
    return {Kind::Unreachable,
            TextOf(TextNumber::kCommandFailed, ForeignText(command_), failure.Description())};
  }
}

SendResult CommandTransport::Run(const OutgoingMail& mail) const {
  using How = CommandEnd::Kind;
  if (!NamesOnly(mail))
    return {Kind::Refused, TextOf(TextNumber::kCommandRecipients, ForeignText(mail.Recipient))};
  if (interruption_.IsSet()) return {Kind::Unreachable, TextOf(TextNumber::kSourceInterrupted)};
  const CommandEnd end = RunCommand({"/bin/sh", "-c", command_}, mail.Bytes, longest_, interruption_);
  const auto number = [](auto value) { return FromUtf8(std::to_string(value)); };
  if (end.How == How::Interrupted) return {Kind::Unreachable, TextOf(TextNumber::kSourceInterrupted)};
  const String command = ForeignText(command_), output = ForeignText(end.Output);
  if (end.How == How::TooLong) {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(longest_).count();
    return {Kind::Unreachable, TextOf(TextNumber::kCommandTooLong, command, number(seconds))};
  }
  const bool signalled = end.How == How::Signalled;
  const Kind kind = signalled ? Kind::Deferred : KindOf(end.Number);
  if (kind == Kind::Sent) return {};
  String how = TextOf(signalled ? TextNumber::kEndedBySignal : TextNumber::kExitCode, number(end.Number));
  if (!output.empty()) how.append(u": ").append(output);
  return {kind, TextOf(kind == Kind::Refused ? TextNumber::kCommandRefused : TextNumber::kCommandFailed,
                       command, how)};
}

void CommandTransport::Check() {
  const auto run = [&](const std::vector<std::string>& arguments) {
    const CommandEnd end = RunCommand(arguments, {}, longest_, interruption_);
    if (end.How == CommandEnd::Kind::Interrupted) Raise(TextOf(TextNumber::kSourceInterrupted));
    return end;
  };
  const CommandEnd read = run({"/bin/sh", "-n", "-c", command_});
  if (read.Number != 0)
    Raise(TextOf(TextNumber::kCommandFailed, ForeignText(command_), ForeignText(read.Output)));
  const std::string program = ProgramOf(command_);
  if (program.empty()) return;
  // The shell finds a file by its path even if it can't run it.
  constexpr const char* kFind =
      "p=$(command -v \"$1\") || exit 1; case $p in */*) test -f \"$p\" -a -x \"$p\" || exit 2;; esac";
  const int found = run({"/bin/sh", "-c", kFind, "sh", program}).Number;
  if (found != 0)
    Raise(TextOf(found == 2 ? TextNumber::kCommandNotExecutable : TextNumber::kCommandMissing,
                 FromUtf8(program)));
}

void CommandTransport::Interrupt() {
  interruption_.Set();
}

std::unique_ptr<MailTransport> MakeCommandTransport(StringView command) {
  return std::make_unique<CommandTransport>(command);
}

}  // namespace Gateway
