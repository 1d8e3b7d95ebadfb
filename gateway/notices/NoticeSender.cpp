#include "gateway/notices/NoticeSender.h"

#include <unistd.h>

#include <algorithm>
#include <string>
#include <utility>

#include "gateway/notices/CutMarkerText.h"
#include "gateway/notices/NoticeMail.h"
#include "gateway/notices/NoticeRoutes.h"
#include "gateway/notices/ProjectSending.h"
#include "platform/Failure.h"
#include "platform/NoticeTexts.h"
#include "platform/Services.h"
#include "platform/StoredNames.h"
#include "platform/UtcText.h"
#include "runtime/MailAddress.h"
#include "runtime/Texts.h"

namespace Gateway {
namespace {

using Platform::DueNotice;
using Platform::NoticeKind;
using Kind = SendResult::Kind;
namespace TextNumber = Platform::TextNumber;
namespace TransportId = Platform::TransportId;

constexpr std::chrono::minutes kQuietMail(15);  // one mail of a slow server

// True if the time, as DueNotice::FirstAttempt, is longer ago than a mail is tried.
bool TriedInVain(StringView firstAttempt) {
  const auto now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
  return !firstAttempt.empty() &&
         firstAttempt < Platform::FromUtf8(Platform::UtcText(now - Platform::kLongestTry));
}

[[noreturn]] void Refuse(const String& reason) {
  throw Platform::Failure(Platform::FailureNumber::RefusedInput, u"Gateway", reason);
}

}  // namespace

class NoticeSender::Work {
 public:
  Work(NoticeSettings settings, NoticeObserver& observer)
      : settings_(std::move(settings)),
        observer_(observer),
        queue_(Platform::Services().CreateByName(Platform::NoticeQueue::kName)),
        routes_(settings_) {}

  PassResult Pass(const String& projectPath, bool now);
  std::int32_t Ready() const { return queue_.Ready(OwnUid()); }
  void Interrupt() { routes_.Interrupt(); }

 private:
  static std::int32_t OwnUid() { return static_cast<std::int32_t>(getuid()); }
  void SendDue(PassResult& pass);
  void Handle(const DueNotice& notice, PassResult& pass);
  NoticeRoutes::Attempt Try(const DueNotice& notice);
  NoticeSource SourceOf(const DueNotice& notice) const;
  bool IsMailbox(StringView address) const;
  void ReadSettings();
  void Settle(const DueNotice& notice, NoticeRoutes::Attempt attempt, PassResult& pass);
  void MarkSent(std::int32_t id);

  const NoticeSettings settings_;
  NoticeObserver& observer_;
  const Platform::NoticeQueue queue_;
  NoticeRoutes routes_;

  String projectPath_;
  std::optional<std::int32_t> unmarked_;   // was sent, but that could not be stored
  std::optional<ProjectSending> sending_;  // read once in a pass, when something is due
  String problem_;                         // as PassResult::Problem; read again in each pass
  String cutMarker_;
};

NoticeSender::PassResult NoticeSender::Work::Pass(const String& projectPath, bool now) {
  observer_.WorkingFor(kQuietMail);
  if (queue_.Open(projectPath)) unmarked_.reset();
  PassResult pass;
  if (!queue_.Lock()) {
    pass.Complete = false;
    pass.Reason = Runtime::TextOf(TextNumber::kNoticesInUse, projectPath);
    return pass;
  }
  projectPath_ = projectPath;
  sending_.reset();
  try {
    if (now) {
      queue_.EndPauses();
      routes_.Reopen();
    }
    SendDue(pass);
  } catch (...) {
    queue_.Unlock();
    throw;
  }
  queue_.Unlock();
  routes_.CloseIdle();
  return pass;
}

void NoticeSender::Work::SendDue(PassResult& pass) {
  if (unmarked_) MarkSent(*unmarked_);
  if (!problem_.empty()) ReadSettings();
  while (!routes_.Interrupted()) {
    const Platform::NextNotice next = queue_.Next(settings_.PerMinute, OwnUid(), problem_.empty());
    if (!next.Notice) {
      pass.Next = next.Wait;
      pass.Limited = next.Limited;
      pass.Problem = problem_;
      return;
    }
    observer_.WorkingFor(kQuietMail);
    Handle(*next.Notice, pass);
  }
  pass.Complete = false;
}

void NoticeSender::Work::Handle(const DueNotice& notice, PassResult& pass) {
  if (!sending_) ReadSettings();
  if (notice.Route.Transport == 0 && !problem_.empty()) return queue_.Untried();
  NoticeRoutes::Attempt attempt;
  try {
    attempt = Try(notice);
  } catch (const Platform::Failure& failure) {
    // An address, or the host of a user who posted, isn't usable.
    if (failure.Number() != Platform::FailureNumber::RefusedInput) throw;
    attempt = {{Kind::Refused, failure.Description()}, false, {}};
  }
  Settle(notice, std::move(attempt), pass);
}

void NoticeSender::Work::ReadSettings() {
  ProjectSending sending = ReadMailboxSending(projectPath_, settings_.Address);
  if (const String problem = AddressProblem(sending); !problem.empty())
    Refuse(problem);  // nobody could answer
  problem_ = RouteProblem(sending);
  if (cutMarker_.empty()) cutMarker_ = LoadCutMarkerText();
  sending_ = std::move(sending);
}

NoticeSource NoticeSender::Work::SourceOf(const DueNotice& notice) const {
  const bool byProject = notice.Route.Transport == 0;
  return {sending_->ProjectName, sending_->Address,
          !byProject                          ? notice.Route.RealName
          : notice.Kind == NoticeKind::Answer ? sending_->RealName
                                              : String(),
          byProject ? String() : notice.Route.Address, cutMarker_};
}

// The mailbox would hold each notice that it sends to itself.
bool NoticeSender::Work::IsMailbox(StringView address) const {
  return Platform::EqualsIgnoreCase(Runtime::CanonicalAddress(address),
                                    Runtime::CanonicalAddress(sending_->Address));
}

NoticeRoutes::Attempt NoticeSender::Work::Try(const DueNotice& notice) {
  if (IsMailbox(notice.Recipient.Address))
    Refuse(Runtime::TextOf(TextNumber::kRecipientIsMailbox, notice.Recipient.Address));
  const OutgoingMail mail = ComposeNotice(notice, SourceOf(notice));
  const bool byProject = notice.Route.Transport == 0;
  const std::int32_t transport = byProject ? sending_->Transport : notice.Route.Transport;
  if (transport == TransportId::kSmtp)
    return routes_.SendBySmtp(byProject ? sending_->HostName : notice.Route.Server, mail);
  return routes_.SendByCommand(CommandOfProfile(byProject ? sending_->MapiProfile : notice.Route.Server),
                               mail);
}

// If the disk is full or the database locked, the next pass stores it before it sends anything else.
void NoticeSender::Work::MarkSent(std::int32_t id) {
  unmarked_ = id;
  queue_.Sent(id);
  unmarked_.reset();
}

void NoticeSender::Work::Settle(const DueNotice& notice, NoticeRoutes::Attempt attempt, PassResult& pass) {
  if (routes_.Interrupted() && attempt.Result.Result == Kind::Unreachable) return;
  if (!attempt.Tried) queue_.Untried();
  SendResult& result = attempt.Result;
  if (result.Result != Kind::Sent) pass.Reason = result.Reason;
  const bool again = result.Result == Kind::Deferred || result.Result == Kind::Unreachable;
  if (again && TriedInVain(notice.FirstAttempt))
    result = {Kind::Refused, Runtime::TextOf(TextNumber::kSentInVain, result.Reason)};
  switch (result.Result) {
    case Kind::Sent:
      MarkSent(notice.Id);
      ++pass.Sent;
      break;
    case Kind::Refused:
      queue_.GiveUp(notice.Id, result.Reason);
      ++pass.Refused;
      break;
    case Kind::Deferred:
    case Kind::Unreachable:
      if (!attempt.Tried) {
        pass.Postponed += static_cast<std::size_t>(queue_.Postpone(notice.Id, attempt.Pause));
        return;
      }
      queue_.Defer(notice.Id, result.Reason, std::max(attempt.Pause, NoticePause(notice.Attempts + 1)));
      ++pass.Deferred;
  }
  observer_.Attempted(notice, result);
}

NoticeSender::NoticeSender(NoticeSettings settings, NoticeObserver& observer)
    : work_(std::make_unique<Work>(std::move(settings), observer)) {}

NoticeSender::~NoticeSender() = default;

NoticeSender::PassResult NoticeSender::Pass(const String& projectPath, bool now) {
  return work_->Pass(projectPath, now);
}

std::int32_t NoticeSender::Ready() {
  return work_->Ready();
}

void NoticeSender::Interrupt() {
  work_->Interrupt();
}

}  // namespace Gateway
