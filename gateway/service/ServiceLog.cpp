#include "gateway/service/ServiceLog.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>

#include "gateway/service/Systemd.h"
#include "platform/TerminalText.h"

namespace Gateway {
namespace {

using Platform::StringView;
using Platform::TerminalLine;

constexpr std::size_t kLongestValue = 1000;  // in characters

std::string ValueOf(StringView text) {
  if (text.size() <= kLongestValue) return TerminalLine(text);
  return TerminalLine(text.substr(0, kLongestValue)) + "...";
}

std::string_view WordOf(SendResult::Kind kind) {
  switch (kind) {
    case SendResult::Kind::Sent:
      return "sent";
    case SendResult::Kind::Refused:
      return "given-up";
    case SendResult::Kind::Deferred:
    case SendResult::Kind::Unreachable:
      break;
  }
  return "deferred";
}

std::string_view WordOf(ServiceLog::Severity severity) {
  switch (severity) {
    case ServiceLog::Severity::Error:
      return "error";
    case ServiceLog::Severity::Warning:
      return "warning";
    case ServiceLog::Severity::Notice:
      return "notice";
    case ServiceLog::Severity::Information:
      break;
  }
  return "info";
}

// The value as logfmt writes it.
std::string Quoted(const std::string& value) {
  if (!value.empty() && value.find_first_of(" \"=\\") == std::string::npos) return value;
  std::string quoted = "\"";
  for (const char c : value) {
    if (c == '"' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted + '"';
}

std::string JournalName(std::string_view name) {
  std::string upper = "TALVANE_";
  for (const char c : name) upper += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return upper;
}

// Writes the line at once, so that lines of several threads and processes don't mix. False if nobody reads.
bool WriteSoon(const std::string& line) {
  constexpr int kMilliseconds = 1000;
  std::string_view rest = line;
  while (!rest.empty()) {
    pollfd output{STDERR_FILENO, POLLOUT, 0};
    if (poll(&output, 1, kMilliseconds) == 0) return false;
    const ssize_t count = write(STDERR_FILENO, rest.data(), rest.size());
    if (count < 0 && errno != EINTR && errno != EAGAIN) return false;
    if (count > 0) rest.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

}  // namespace

ServiceLog::ServiceLog() : journal_(ErrorsGoToJournal()) {}

void ServiceLog::Mail(const String& mailbox, const MailResult& result) {
  const std::string outcome(WordOf(result.Result));
  const std::string reason = ValueOf(result.Reason), source = ValueOf(Platform::FromUtf8(result.Source));
  Send(result.Result == Outcome::Retry ? Severity::Warning : Severity::Information,
       ValueOf(mailbox) + ": " + outcome + (reason.empty() ? "" : ": " + reason),
       {{"event", "mail"},
        {"mailbox", ValueOf(mailbox)},
        {"source", source},
        {"key", result.Key},
        {"outcome", outcome},
        {"rule", result.Rule},
        {"reason", reason},
        {"answered", result.Answered ? "yes" : ""},
        {"milliseconds", std::to_string(result.Duration.count())}});
  if (!result.Warning.empty()) Event(Severity::Warning, "warning", mailbox, result.Warning);
}

void ServiceLog::Notice(const String& mailbox, const Platform::DueNotice& notice, const SendResult& result) {
  const std::string outcome(WordOf(result.Result)), address = ValueOf(notice.Recipient.Address),
                                                    reason = ValueOf(result.Reason);
  const bool isReply = notice.Kind == Platform::NoticeKind::Reply;
  Send(result.Result == SendResult::Kind::Sent ? Severity::Information : Severity::Warning,
       ValueOf(mailbox) + ": " + outcome + " to " + address + (reason.empty() ? "" : ": " + reason),
       {{"event", isReply ? "notice" : "answer"},
        {"mailbox", ValueOf(mailbox)},
        {"address", address},
        {"discussion", isReply ? std::to_string(notice.Discussion) : ""},
        {"reply", isReply ? std::to_string(notice.Reply.Number) : ""},
        {"outcome", outcome},
        {"reason", reason}});
}

void ServiceLog::Event(Severity severity, std::string_view event, const String& mailbox, const String& text) {
  const std::string name = ValueOf(mailbox), reason = ValueOf(text);
  Send(severity,
       (name.empty() ? "" : name + ": ") + std::string(event) + (reason.empty() ? "" : ": " + reason),
       {{"event", std::string(event)}, {"mailbox", name}, {"reason", reason}});
}

void ServiceLog::Send(Severity severity, const std::string& message, const std::vector<Field>& fields) {
  if (journal_) {
    std::vector<std::string> entry = {"MESSAGE=" + message, "SYSLOG_IDENTIFIER=tvmail",
                                      "PRIORITY=" + std::to_string(static_cast<int>(severity))};
    for (const auto& [name, value] : fields) {
      if (!value.empty()) entry.push_back(JournalName(name) + "=" + value);
    }
    if (SendToJournal(entry)) return;
  }
  WriteLine(severity, fields);
}

void ServiceLog::WriteLine(Severity severity, const std::vector<Field>& fields) {
  std::string line = "level=" + std::string(WordOf(severity));
  for (const auto& [name, value] : fields) {
    if (!value.empty()) line.append(" ").append(name).append("=").append(Quoted(value));
  }
  const std::lock_guard lock(mutex_);
  if (lost_ > 0) line += " lost=" + std::to_string(lost_);
  lost_ = WriteSoon(line + "\n") ? 0 : lost_ + 1;
}

}  // namespace Gateway
