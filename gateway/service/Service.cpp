#include "gateway/service/Service.h"

#include <csignal>
#include <ctime>

#include <algorithm>
#include <utility>

#include "gateway/service/Systemd.h"
#include "platform/Failure.h"
#include "platform/NoticeTexts.h"
#include "platform/ProgramTexts.h"
#include "platform/TerminalText.h"
#include "runtime/Texts.h"

namespace Gateway {
namespace {

namespace TextNumber = Platform::TextNumber;
using Severity = ServiceLog::Severity;
using Platform::FromUtf8;
using Runtime::TextOf;

[[noreturn]] void Refuse(std::int32_t text, StringView first, StringView second = {}) {
  throw Platform::Failure(Platform::FailureNumber::RefusedInput, u"Gateway", TextOf(text, first, second));
}

sigset_t Signals() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int number : {SIGTERM, SIGINT, SIGHUP}) sigaddset(&signals, number);
  return signals;
}

void BlockSignals() {
  const sigset_t signals = Signals();
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
  std::signal(SIGPIPE, SIG_IGN);
}

// From now on the next of the signals kills the process.
void UnblockSignals() {
  std::signal(SIGHUP, SIG_IGN);
  for (const int number : {SIGTERM, SIGINT}) std::signal(number, SIG_DFL);
  const sigset_t signals = Signals();
  pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
}

// The next signal, or 0 after the time.
int WaitForSignal(std::chrono::nanoseconds time) {
  const sigset_t signals = Signals();
  const auto seconds = std::chrono::floor<std::chrono::seconds>(time);
  const std::timespec longest{seconds.count(), (time - seconds).count()};
  const int number = sigtimedwait(&signals, nullptr, &longest);
  return number > 0 ? number : 0;
}

// Mailboxes without a source have no lock.
void RequireUnlocked(const std::vector<MailboxSettings>& mailboxes) {
  std::optional<std::string> holder;
  for (const MailboxSettings& mailbox : mailboxes) {
    if (mailbox.Source) holder = MailboxLock::Holder(mailbox.Name);
    if (!mailbox.Source || !holder) return;
  }
  throw Platform::Failure(
      Platform::FailureNumber::DeviceFailed, u"Gateway",
      TextOf(TextNumber::kMailboxInUse, mailboxes.back().Name, FromUtf8(holder.value_or(""))));
}

}  // namespace

std::vector<MailboxSettings> MailboxesOf(const Configuration& configuration, const std::vector<String>& names,
                                         MailboxNeeds needs) {
  const String path = FromUtf8(configuration.Path);
  const bool sourceNeeded = needs == MailboxNeeds::Source;
  const auto has = [&](const MailboxSettings& mailbox) {
    return needs == MailboxNeeds::Nothing || mailbox.Source || (!sourceNeeded && mailbox.Notices.Send);
  };
  std::vector<MailboxSettings> mailboxes;
  for (const String& name : names) {
    const MailboxSettings* mailbox = configuration.Find(name);
    if (!mailbox) Refuse(TextNumber::kMailboxNotInFile, path, name);
    if (!has(*mailbox))
      Refuse(sourceNeeded ? TextNumber::kMailboxWithoutSource : TextNumber::kMailboxDoesNothing, name);
    if (std::ranges::find(mailboxes, *mailbox) == mailboxes.end()) mailboxes.push_back(*mailbox);
  }
  if (names.empty()) std::ranges::copy_if(configuration.Mailboxes, std::back_inserter(mailboxes), has);
  if (mailboxes.empty()) Refuse(sourceNeeded ? TextNumber::kNoQueues : TextNumber::kNothingToServe, path);
  return mailboxes;
}

Service::Service(std::string configurationPath, std::vector<String> only)
    : path_(std::move(configurationPath)), only_(std::move(only)) {
  const Configuration configuration = ReadConfiguration(path_);
  RequireUnlocked(MailboxesOf(configuration, only_, MailboxNeeds::SourceOrNotices));
  BlockSignals();
  for (const MailboxSettings& mailbox : MailboxesToServe(configuration)) Start(mailbox);
}

// Without those that have nothing to do. Logs a warning for each of them, and those of the file.
std::vector<MailboxSettings> Service::MailboxesToServe(const Configuration& configuration) {
  std::vector<MailboxSettings> mailboxes = MailboxesOf(configuration, only_, MailboxNeeds::Nothing);
  for (const std::string& line : configuration.Warnings)
    log_.Event(Severity::Warning, "configuration", {}, FromUtf8(line));
  std::erase_if(mailboxes, [this](const MailboxSettings& mailbox) {
    if (mailbox.Source || mailbox.Notices.Send) return false;
    log_.Event(Severity::Warning, "configuration", mailbox.Name,
               TextOf(TextNumber::kMailboxDoesNothing, mailbox.Name));
    return true;
  });
  return mailboxes;
}

void Service::Start(const MailboxSettings& mailbox) {
  served_.push_back(std::make_unique<ServedMailbox>(mailbox, log_));
  log_.Event(Severity::Notice, "started", mailbox.Name, {});
}

void Service::Run() {
  constexpr std::chrono::nanoseconds kLongestPause = std::chrono::seconds(1);
  const auto watchdog = WatchdogTime();
  const auto pause =
      watchdog ? std::min<std::chrono::nanoseconds>(*watchdog / 3, kLongestPause) : kLongestPause;
  NotifyManager("READY=1");
  for (;;) {
    Report();
    const int signal = WaitForSignal(pause);
    if (signal == SIGTERM || signal == SIGINT) break;
    if (signal == SIGHUP) Reload();
  }
  Stop();
}

void Service::Report() {
  const auto alive = [](const auto& mailbox) { return mailbox->Alive(); };
  if (std::ranges::all_of(served_, alive)) NotifyManager("WATCHDOG=1");
  std::size_t failing = 0;
  std::string names;
  for (const auto& mailbox : served_) {
    if (!mailbox->Failing()) continue;
    ++failing;
    if (names.size() < 200)
      names += (names.empty() ? "" : ", ") + Platform::TerminalLine(mailbox->Settings().Name);
  }
  std::string status = std::to_string(served_.size()) + " mailboxes, " + std::to_string(failing) +
                       " failing" + (names.empty() ? "" : ": " + names);
  if (status == reportedStatus_) return;
  NotifyManager("STATUS=" + status);
  reportedStatus_ = std::move(status);
}

void Service::Reload() {
  NotifyManager(ReloadingState());
  try {
    const Configuration configuration = ReadConfiguration(path_);
    Apply(MailboxesToServe(configuration));
    for (const auto& mailbox : served_) mailbox->EndPauses();
    log_.Event(Severity::Notice, "reloaded", {}, {});
  } catch (const std::exception&) {
    // Each line of the description is an error.
    String errors = Platform::CurrentFailure().Description();
    for (std::size_t begin = 0; begin < errors.size();) {
      const std::size_t end = std::min(errors.find(u'\n', begin), errors.size());
      log_.Event(Severity::Error, "configuration", {}, errors.substr(begin, end - begin));
      begin = end + 1;
    }
    log_.Event(Severity::Error, "configuration", {}, TextOf(TextNumber::kConfigurationKept));
  }
  NotifyManager("READY=1");
}

void Service::Apply(const std::vector<MailboxSettings>& wanted) {
  // One that fails is started again, so that what the administrator has put right takes effect at once.
  const auto isWanted = [&](const auto& mailbox) {
    return !mailbox->Failing() && std::ranges::find(wanted, mailbox->Settings()) != wanted.end();
  };
  const auto ending = std::stable_partition(served_.begin(), served_.end(), isWanted);
  // All are told before the first is waited for.
  for (auto mailbox = ending; mailbox != served_.end(); ++mailbox) (*mailbox)->RequestStop();
  for (auto mailbox = ending; mailbox != served_.end(); ++mailbox)
    log_.Event(Severity::Notice, "stopped", (*mailbox)->Settings().Name, {});
  served_.erase(ending, served_.end());
  for (const MailboxSettings& mailbox : wanted) {
    const bool runs =
        std::ranges::any_of(served_, [&](const auto& served) { return served->Settings() == mailbox; });
    if (!runs) Start(mailbox);
  }
}

void Service::Stop() {
  UnblockSignals();
  NotifyManager("STOPPING=1");
  log_.Event(Severity::Notice, "stopping", {}, {});
  for (const auto& mailbox : served_) mailbox->RequestStop();
  served_.clear();
  log_.Event(Severity::Notice, "stopped", {}, {});
}

}  // namespace Gateway
