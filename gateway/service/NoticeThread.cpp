#include "gateway/service/NoticeThread.h"

#include <algorithm>
#include <utility>

#include "gateway/delivery/MailboxRecords.h"
#include "platform/Failure.h"
#include "platform/ProgramTexts.h"
#include "runtime/Texts.h"

namespace Gateway {
namespace {

constexpr std::chrono::milliseconds kLongestPause(1000);

}  // namespace

NoticeThread::NoticeThread(MailboxSettings settings, ServiceLog& log)
    : settings_(std::move(settings)), log_(log), loop_(settings_.Name, {"unsent", "sending"}, log, *this) {}

void NoticeThread::Attempted(const Platform::DueNotice& notice, const SendResult& result) {
  unreachable_ = result.Result == SendResult::Kind::Unreachable;
  if (unreachable_)
    loop_.Fail(result.Reason);
  else if (result.Result != SendResult::Kind::Deferred || notice.Attempts == 0)
    log_.Notice(settings_.Name, notice, result);
}

void NoticeThread::Serve() {
  const auto record = FindMailbox(settings_.Name);
  if (!record)
    throw Platform::Failure(Platform::FailureNumber::DeviceFailed, u"Gateway",
                            Runtime::TextOf(Platform::TextNumber::kMailboxMissing, settings_.Name));
  const NoticeSender::PassResult pass = PassOnce(record->ProjectPath);
  loop_.ResetBackOff();
  if (pass.Complete && !pass.Next) unreachable_ = false;  // nothing waits for that server any longer
  if (!pass.Problem.empty())
    loop_.Fail(pass.Problem);
  else if (pass.Complete && !unreachable_)
    loop_.Succeed();
  loop_.Pause(std::min(pass.Next.value_or(kLongestPause), kLongestPause));
}

// Pauses that could not be ended, since the project is in use or can't be read, are ended by a later pass.
NoticeSender::PassResult NoticeThread::PassOnce(const String& projectPath) {
  const bool now = endPauses_.exchange(false);
  try {
    NoticeSender::PassResult pass = Sender()->Pass(projectPath, now);
    if (now && !pass.Complete) endPauses_ = true;
    return pass;
  } catch (...) {
    if (now) endPauses_ = true;
    throw;
  }
}

void NoticeThread::EndPauses() {
  endPauses_ = true;
  loop_.Wake();
}

std::shared_ptr<NoticeSender> NoticeThread::Sender() {
  if (!sender_) {  // only this thread changes it
    auto sender = std::make_shared<NoticeSender>(settings_.Notices, static_cast<NoticeObserver&>(*this));
    const std::lock_guard lock(mutex_);
    if (loop_.Stopping()) sender->Interrupt();
    sender_ = std::move(sender);
  }
  return sender_;
}

void NoticeThread::Close() {
  const std::lock_guard lock(mutex_);
  sender_.reset();
}

void NoticeThread::Interrupt() {
  const std::lock_guard lock(mutex_);
  if (sender_) sender_->Interrupt();
}

}  // namespace Gateway
