#include "gateway/service/MailboxThread.h"

#include <utility>

namespace Gateway {
namespace {

constexpr std::chrono::minutes kLongestWait(10);

}  // namespace

MailboxThread::MailboxThread(MailboxSettings settings, ServiceLog& log, std::function<void()> delivered)
    : settings_(std::move(settings)),
      log_(log),
      delivered_(std::move(delivered)),
      loop_(settings_.Name, {"failing", "working"}, log, *this) {}

void MailboxThread::Handled(const MailResult& result, bool news) {
  if (news) log_.Mail(settings_.Name, result);
  if (result.ReplyStored || result.Answered) delivered_();
}

void MailboxThread::Serve() {
  std::shared_ptr<MailboxWork> work = work_;  // only this thread changes it
  if (!work) {
    work = std::make_shared<MailboxWork>(settings_, static_cast<MailboxObserver&>(*this));
    const std::lock_guard lock(mutex_);
    if (loop_.Stopping()) work->Interrupt();
    work_ = work;
  }
  const MailboxWork::PassResult pass = work->Pass();
  if (!pass.Complete) return;
  loop_.ResetBackOff();
  if (pass.Left == 0)
    loop_.Succeed();
  else if (!pass.Reason.empty())
    loop_.Fail(pass.Reason);
  work->Wait(kLongestWait);
}

void MailboxThread::Close() {
  const std::lock_guard lock(mutex_);
  work_.reset();
}

void MailboxThread::Interrupt() {
  const std::lock_guard lock(mutex_);
  if (work_) work_->Interrupt();
}

}  // namespace Gateway
