#include "gateway/delivery/MailProcessor.h"

#include <utility>

#include "gateway/delivery/CutMarker.h"
#include "gateway/delivery/FailureJudge.h"
#include "gateway/delivery/HeldMail.h"
#include "gateway/delivery/MailFollowUp.h"
#include "gateway/delivery/MailboxHandler.h"
#include "gateway/delivery/MailboxProject.h"
#include "gateway/policy/EmptyReply.h"
#include "gateway/policy/Gate.h"
#include "platform/Failure.h"
#include "platform/NoticeTexts.h"
#include "platform/ProgramTexts.h"
#include "platform/ReasonTexts.h"
#include "runtime/ClassLookup.h"
#include "runtime/Texts.h"

namespace Gateway {
namespace {

// Rules beside those of the gate, for logs.
constexpr const char* kComponentRule = "component";

// Without the text of the cut marker the component would store the reply with all that it answers.
void RequireText(CutMarker& marker) {
  if (!marker.OriginalText().empty()) return;
  throw Platform::Failure(Platform::FailureNumber::DeviceFailed, u"Gateway",
                          u"The text of the cut marker can't be loaded: install TvResourceServices.so and "
                          u"the TvComRes catalogues, and register them by tvmail init.");
}

void Refuse(MailResult& result, Refusal cause) {
  result.Result = Outcome::Refused;
  result.Rule = cause.Rule;
  result.Reason = cause.In();
  result.Cause = std::move(cause);
}

}  // namespace

class MailProcessor::Work {
 public:
  Work(String mailbox, const DeliverySettings& settings)
      : mailbox_(std::move(mailbox)),
        settings_(settings),
        project_(mailbox_, settings_.Address),
        followUp_(project_, settings_.Policy),
        handler_(mailbox_),
        held_(mailbox_) {
    if (settings_.Hold) ExpireHeld();
  }

  bool Holds() const { return settings_.Hold; }
  const PolicySettings& Policy() const { return settings_.Policy; }

  const Platform::MailIntake& Intake() const { return project_.Intake(); }

  void ExpireHeld() { held_.Expire(settings_.HeldDays); }

  // Sets the result, but for a failure, which it raises. Nothing is stored then. Uses up what was read.
  void Process(PreparedMail& prepared, MailResult& result);

  // Keeps a refused mail with its reason, and tells its sender. The mail has to be tried again if it can't be
  // kept.
  void Hold(const RawMail& raw, MailResult& result);

 private:
  void OpenProject();

  // True, with that result, if a copy of the mail was stored before, which is looked up unless it is known.
  bool IsDuplicate(MailResult& result, bool known = false);
  void Answer(const RawMail& raw, MailResult& result);
  void Deliver(Mime::Mail mail, const Platform::MailSender& sender, MailResult& result);

  const String mailbox_;
  const DeliverySettings settings_;
  MailboxProject project_;
  MailFollowUp followUp_;
  const MailboxHandler handler_;
  HeldMail held_;
  FailureJudge judge_;
  CutMarker marker_;
};

void MailProcessor::Work::Process(PreparedMail& prepared, MailResult& result) {
  const RawMail& raw = prepared.Raw;
  if (!raw.Fault.empty()) {
    result.Result = raw.FaultOutcome;
    result.Reason = Platform::FromUtf8(raw.Fault);
    if (raw.FaultOutcome == Outcome::Refused) result.Rule = raw.Bytes.empty() ? kLimitRule : kHeaderOnlyRule;
    return;
  }
  if (prepared.Read) result.MessageId = prepared.Read->MessageId;
  result.Key = prepared.Key;
  if (prepared.Refused) return Refuse(result, *prepared.Refused);
  if (!prepared.Read || prepared.Key.empty()) {
    result.Reason = prepared.Failed;
    return;
  }
  Mime::Mail mail = *std::move(prepared.Read);

  OpenProject();
  followUp_.CountBounces(mail, raw.Bytes, result);
  RequireText(marker_);
  const std::size_t cut = marker_.Repair(mail.Body);
  const GateFacts facts{
      .Mail = mail,
      .EnvelopeSender = raw.EnvelopeSender,
      .Sender = mail.FromAddress ? project_.Intake().FindSender(*mail.FromAddress) : Platform::MailSender(),
      .MailboxAddress = project_.Address(),
      .WhyEmpty = WhyReplyIsEmpty(mail, cut, marker_.OriginalText())};
  if (const auto refusal = RefusalOf(facts, settings_.Policy)) {
    if (!IsDuplicate(result)) Refuse(result, *refusal);
    return;
  }
  Deliver(std::move(mail), facts.Sender, result);
  if (result.Result == Outcome::Delivered && facts.WhyEmpty) result.WhyEmpty = facts.WhyEmpty->In();
}

// A mail is looked up in the project only if it was not stored: storing it finds the former one, too, and a
// mail rarely comes again.
bool MailProcessor::Work::IsDuplicate(MailResult& result, bool known) {
  if (!known && !project_.Intake().IsStored(Platform::FromUtf8(result.Key))) return false;
  result.Result = Outcome::Duplicate;
  result.Failure.clear();
  return true;
}

// The component keeps the project that it opened.
void MailProcessor::Work::OpenProject() {
  if (project_.Open()) handler_.CloseProject();
}

// Only what the project library has stored decides whether the mail was delivered, whatever the component
// says: it has a complaint about a stranger's mail, but stores its reply.
void MailProcessor::Work::Deliver(Mime::Mail mail, const Platform::MailSender& sender, MailResult& result) {
  const bool known = sender.MailAccepted;
  // Another process may change the sender's user before the component looks it up. The component would then
  // take the user of the mail before.
  project_.Intake().Begin(Platform::FromUtf8(result.Key), known ? sender.UserKey : 0);
  // A handler that no other mail has used posts a stranger's mail in the name of the mailbox's user.
  result.Failure =
      known ? handler_.Handle(std::move(mail)) : MailboxHandler(mailbox_).Handle(std::move(mail));
  const Platform::IntakeResult stored = project_.Intake().End();
  if (stored == Platform::IntakeResult::Stored) {
    result.ReplyStored = true;
    result.Result = Outcome::Delivered;
    return;
  }
  if (IsDuplicate(result, stored == Platform::IntakeResult::AlreadyStored)) return;
  Verdict verdict = judge_.Judge(result.Failure);
  if (verdict.Result == Outcome::Refused) return Refuse(result, {kComponentRule, verdict.Text});
  result.Reason = result.Failure.empty() ? Runtime::TextOf(Platform::TextNumber::kNothingStored)
                                         : std::move(verdict.Reason);
}

void MailProcessor::Work::Hold(const RawMail& raw, MailResult& result) {
  result.Result = Outcome::Retry;
  try {
    held_.Keep(raw.Bytes, {result.Rule, result.Reason, raw.EnvelopeSender});
    ExpireHeld();
    result.Result = Outcome::Held;
  } catch (const std::exception&) {
    result.Reason = Runtime::TextOf(Platform::TextNumber::kMailNotHeld, result.Reason, CurrentReason());
  }
  if (result.Result == Outcome::Held) Answer(raw, result);
}

// A mail whose sender can't be trusted gets no answer: its own address would get what somebody else has sent.
void MailProcessor::Work::Answer(const RawMail& raw, MailResult& result) {
  if (!settings_.AnswerSenders || result.Rule == Rule::kAuthentication || result.Rule == Rule::kAutomatic)
    return;
  try {
    OpenProject();
  } catch (const std::exception&) {
    result.Warning = Runtime::TextOf(Platform::TextNumber::kSenderNotTold, CurrentReason());
    return;
  }
  followUp_.AnswerSender(raw, result);
}

MailProcessor::MailProcessor(String mailbox, DeliverySettings settings)
    : work_(std::make_unique<Work>(std::move(mailbox), settings)) {}

MailProcessor::~MailProcessor() = default;

void MailProcessor::ExpireHeld() {
  if (work_->Holds()) work_->ExpireHeld();
}

void MailProcessor::SyncLater() {
  work_->Intake().SyncLater();
}

bool MailProcessor::Sync(std::span<MailResult> results) {
  try {
    work_->Intake().Sync();
    return true;
  } catch (const std::exception&) {
    for (MailResult& result : results) {
      if (result.Result != Outcome::Delivered && result.Result != Outcome::Duplicate) continue;
      result.Result = Outcome::Retry;
      result.ReplyStored = false;
      result.Reason = CurrentReason();
    }
    return false;
  }
}

MailResult MailProcessor::Process(RawMail raw) {
  return Process(PrepareMail(std::move(raw), work_->Policy()));
}

MailResult MailProcessor::Process(PreparedMail mail) {
  const auto begin = std::chrono::steady_clock::now();
  const Runtime::ClassLookupScope lookup;
  const RawMail& raw = mail.Raw;
  MailResult result;
  result.Source = raw.Source;
  try {
    work_->Process(mail, result);
  } catch (const std::exception&) {
    result.Reason = CurrentReason();
  }
  // A mail of which nothing was read can't be held, now or later. Its source has it.
  const bool unread = !raw.Fault.empty() && raw.Bytes.empty();
  if (result.Result == Outcome::Refused && work_->Holds() && !unread) work_->Hold(raw, result);
  result.Duration = std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() -
                                                                          begin + mail.Duration);
  return result;
}

}  // namespace Gateway
