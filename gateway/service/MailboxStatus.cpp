#include "gateway/service/MailboxStatus.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <ctime>
#include <sstream>
#include <utility>

#include "gateway/service/MailboxFile.h"
#include "platform/TerminalText.h"
#include "runtime/DurableFile.h"

namespace Gateway {
namespace {

using Clock = std::chrono::system_clock;

constexpr const char* kFolder = "status";
constexpr const char* kEnd = "end";  // the last line; what follows is left from a longer text
constexpr std::size_t kLargestFile = 4096;
constexpr std::size_t kLongestReason = 1000;
constexpr std::chrono::seconds kStoreInterval(1);

StatusTime Now() {
  return std::chrono::floor<std::chrono::seconds>(Clock::now());
}

std::string Today() {
  const std::time_t now = Clock::to_time_t(Clock::now());
  std::tm local{};
  char text[16];
  localtime_r(&now, &local);
  return {text, std::strftime(text, sizeof text, "%Y-%m-%d", &local)};
}

// A line for each member: its name, a blank, and the value.
std::string TextOf(const MailboxStatus& status) {
  std::ostringstream text;
  text << "day " << status.Day << '\n';
  for (const auto& [outcome, name] : kOutcomeWords) {
    const auto count = status.Counts.find(outcome);
    if (count != status.Counts.end()) text << name << ' ' << count->second << '\n';
  }
  const auto time = [&](const char* name, const std::optional<StatusTime>& at) {
    if (at) text << name << ' ' << at->time_since_epoch().count() << '\n';
  };
  time("last-delivered", status.LastDelivered);
  time("last-failure", status.LastFailure);
  if (!status.Reason.empty())
    text << "reason " << Platform::TerminalLine(StringView(status.Reason).substr(0, kLongestReason)) << '\n';
  text << "failing " << (status.Failing ? 1 : 0) << '\n' << kEnd << '\n';
  return text.str();
}

void ReadLine(const std::string& name, const std::string& value, MailboxStatus& status) {
  long long number = 0;
  const bool isNumber = std::from_chars(value.data(), value.data() + value.size(), number).ec == std::errc();
  const StatusTime time{std::chrono::seconds(number)};
  if (name == "day") status.Day = value;
  if (name == "reason") status.Reason = Platform::FromUtf8(value);
  if (!isNumber || number < 0) return;
  if (name == "last-delivered") status.LastDelivered = time;
  if (name == "last-failure") status.LastFailure = time;
  if (name == "failing") status.Failing = number != 0;
  const auto* count = std::ranges::find(kOutcomeWords, name, &std::pair<Outcome, const char*>::second);
  if (count != std::end(kOutcomeWords)) status.Counts[count->first] = static_cast<std::size_t>(number);
}

MailboxStatus StatusOf(const std::string& text) {
  MailboxStatus status;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    if (line == kEnd) return status;
    const std::size_t blank = line.find(' ');
    if (blank != std::string::npos) ReadLine(line.substr(0, blank), line.substr(blank + 1), status);
  }
  return {};
}

std::string ContentOf(const Runtime::Descriptor& file, const std::string& path) {
  std::string text(kLargestFile, '\0');
  const ssize_t count = pread(file.Number(), text.data(), text.size(), 0);
  if (count < 0) RaiseFolderDenied(path, errno);
  text.resize(static_cast<std::size_t>(count));
  return text;
}

// Adds to the stored status. The lock lasts for some microseconds, so that waiting for it is no harm.
void AddToFile(const String& mailbox, const MailboxStatus& added) {
  const std::string path = MakeMailboxFile(kFolder, mailbox);
  const Runtime::Descriptor file(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
  if (!file || flock(file.Number(), LOCK_EX) != 0) RaiseFolderDenied(path, errno);
  MailboxStatus status = StatusOf(ContentOf(file, path));
  // Written while the clock was wrong. Nothing would be counted until that day.
  if (status.Day > Today()) status.Day.clear();
  status.Add(added);
  const std::string text = TextOf(status);
  const ssize_t written = pwrite(file.Number(), text.data(), text.size(), 0);
  if (written < 0 || ftruncate(file.Number(), written) != 0) RaiseFolderDenied(path, errno);
}

}  // namespace

void MailboxStatus::Add(const MailboxStatus& later) {
  if (Day < later.Day) {
    Counts.clear();
    Day = later.Day;
  }
  if (Day == later.Day) {
    for (const auto& [outcome, count] : later.Counts) Counts[outcome] += count;
  }
  if (later.LastDelivered) LastDelivered = std::max(LastDelivered, later.LastDelivered);
  if (later.LastFailure) {
    LastFailure = later.LastFailure;
    Reason = later.Reason;
  }
  Failing = later.Failing;
}

MailboxStatus ReadStatus(StringView mailbox) {
  const std::string path = MailboxFile(kFolder, mailbox);
  MailboxStatus status;
  const Runtime::Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (!file && errno != ENOENT) RaiseFolderDenied(path, errno);
  if (file && flock(file.Number(), LOCK_SH) == 0) status = StatusOf(ContentOf(file, path));
  if (status.Day != Today()) status.Counts.clear();
  return status;
}

void StatusRecorder::Add(const MailResult& result) {
  if (const std::string today = Today(); added_.Day != today) {
    Store();
    added_.Counts.clear();
    added_.Day = today;
  }
  ++added_.Counts[result.Result];
  if (result.Result == Outcome::Delivered) added_.LastDelivered = Now();
  if (result.Result == Outcome::Retry) {
    AddFailure(result.Reason);
  } else {
    added_.Failing = false;
    changed_ = true;
    StoreIfDue();
  }
}

void StatusRecorder::AddFailure(const String& reason) {
  added_.LastFailure = Now();
  added_.Reason = reason;
  added_.Failing = true;
  changed_ = true;
  StoreIfDue();
}

void StatusRecorder::AddSuccess() {
  // The process before this one may have failed.
  changed_ = changed_ || added_.Failing || stored_ == std::chrono::steady_clock::time_point();
  added_.Failing = false;
  StoreIfDue();
}

void StatusRecorder::StoreIfDue() {
  if (std::chrono::steady_clock::now() - stored_ >= kStoreInterval) Store();
}

void StatusRecorder::Store() noexcept {
  if (!changed_) return;
  try {
    stored_ = std::chrono::steady_clock::now();
    if (added_.Day.empty()) added_.Day = Today();
    AddToFile(mailbox_, added_);
    const bool failing = added_.Failing;
    added_ = {};
    added_.Failing = failing;
    added_.Day = Today();
    changed_ = false;
  } catch (const std::exception&) {
    // Added with what comes next.
  }
}

}  // namespace Gateway
