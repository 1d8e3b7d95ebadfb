#include "gateway/service/MailboxWork.h"

#include <algorithm>
#include <utility>

#include "gateway/delivery/MailboxRecords.h"
#include "platform/Failure.h"
#include "platform/ProgramTexts.h"
#include "runtime/Texts.h"

namespace Gateway {
namespace {

constexpr std::chrono::minutes kQuietSource(15);  // one mail of a slow server
constexpr std::chrono::minutes kQuietMail(5);     // one mail in the component
constexpr std::chrono::minutes kWaitMargin(2);

// Reading a mail may take 8 times its size of memory. Mails above this size are read one at a time, whichever
// mailbox they are for.
constexpr std::size_t kLargeMail = std::size_t{4} << 20;

std::unique_lock<std::mutex> RoomFor(const RawMail& mail) {
  static std::mutex& room = *new std::mutex;
  return mail.Bytes.size() > kLargeMail ? std::unique_lock(room) : std::unique_lock<std::mutex>();
}

DeliverySettings Holding(DeliverySettings settings) {
  settings.Hold = true;
  return settings;
}

}  // namespace

MailboxWork::MailboxWork(MailboxSettings settings, MailboxObserver& observer)
    : settings_(std::move(settings)), observer_(observer), lock_(settings_.Name), status_(settings_.Name) {}

void MailboxWork::Open() {
  if (!FindMailbox(settings_.Name))
    throw Platform::Failure(Platform::FailureNumber::DeviceFailed, u"Gateway",
                            Runtime::TextOf(Platform::TextNumber::kMailboxMissing, settings_.Name));
  if (!processor_) processor_ = std::make_unique<MailProcessor>(settings_.Name, Holding(settings_.Delivery));
  if (queue_) return;
  std::unique_ptr<MailQueue> queue = MakeQueue(*settings_.Source);
  const std::lock_guard lock(mutex_);
  if (interrupted_) queue->Interrupt();
  queue_ = std::move(queue);
}

void MailboxWork::Close() {
  processor_.reset();
  const std::lock_guard lock(mutex_);
  queue_.reset();
}

MailboxWork::PassResult MailboxWork::Pass() try {
  observer_.WorkingFor(kQuietSource);
  PassResult pass;
  Open();
  processor_->ExpireHeld();
  retries_.BeginPass();
  const bool all = queue_->Pass([&](RawMail raw) { return Handle(std::move(raw), pass); });
  pass.Complete = all && !Interrupted();
  retries_.EndPass(pass.Complete);
  if (pass.Left == 0 && pass.Complete) status_.AddSuccess();
  status_.Store();
  return pass;
} catch (const std::exception&) {
  EndInFailure();
}

std::optional<Outcome> MailboxWork::Handle(RawMail raw, PassResult& pass) {
  if (Interrupted()) return std::nullopt;
  const std::string source = raw.Source;
  if (!retries_.IsDue(source)) {
    ++pass.Left;
    return Outcome::Retry;
  }
  observer_.WorkingFor(kQuietMail);
  const auto room = RoomFor(raw);
  const MailResult result = processor_->Process(std::move(raw));
  bool news = true;
  if (result.Result == Outcome::Retry) {
    ++pass.Left;
    pass.Reason = result.Reason;
    news = retries_.Failed(source, result.Reason);
  } else {
    retries_.Settled(source);
  }
  status_.Add(result);
  observer_.Handled(result, news);
  observer_.WorkingFor(kQuietSource);
  return result.Result;
}

void MailboxWork::Wait(std::chrono::milliseconds longest) try {
  if (const auto next = retries_.Next()) longest = std::min(longest, *next);
  observer_.WorkingFor(std::chrono::ceil<std::chrono::minutes>(longest) + kWaitMargin);
  queue_->Wait(longest);
} catch (const std::exception&) {
  EndInFailure();
}

void MailboxWork::EndInFailure() {
  const Platform::Failure failure = Platform::CurrentFailure();
  if (!Interrupted()) status_.AddFailure(failure.Description());
  status_.Store();
  Close();
  throw failure;
}

void MailboxWork::Interrupt() {
  const std::lock_guard lock(mutex_);
  interrupted_ = true;
  if (queue_) queue_->Interrupt();
}

bool MailboxWork::Interrupted() {
  const std::lock_guard lock(mutex_);
  return interrupted_;
}

}  // namespace Gateway
