#include "gateway/service/MailboxThread.h"

#include <utility>

#include "platform/Failure.h"

namespace Gateway {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::minutes kLongestWait(10);

}  // namespace

MailboxThread::MailboxThread(MailboxSettings settings, ServiceLog& log)
    : settings_(std::move(settings)), log_(log) {
  WorkingFor(std::chrono::minutes(1));
  thread_ = std::thread([this] { Run(); });
}

MailboxThread::~MailboxThread() {
  RequestStop();
  thread_.join();
}

void MailboxThread::RequestStop() {
  const std::lock_guard lock(mutex_);
  stopping_ = true;
  if (work_) work_->Interrupt();
  wake_.notify_all();
}

bool MailboxThread::Alive() const {
  return Clock::now().time_since_epoch().count() < quietUntil_;
}

void MailboxThread::WorkingFor(std::chrono::minutes longest) {
  quietUntil_ = (Clock::now() + longest).time_since_epoch().count();
}

void MailboxThread::Handled(const MailResult& result, bool news) {
  if (news) log_.Mail(settings_.Name, result);
}

void MailboxThread::Run() {
  while (!Stopping()) {
    try {
      Serve();
    } catch (const std::exception&) {
      if (Stopping()) break;
      Fail(Platform::CurrentFailure().Description());
      backOff_.Failed();
      Pause(backOff_.Pause(RandomPart()));
    }
  }
  const std::lock_guard lock(mutex_);
  work_.reset();
}

void MailboxThread::Serve() {
  std::shared_ptr<MailboxWork> work = work_;  // only this thread changes it
  if (!work) {
    work = std::make_shared<MailboxWork>(settings_, static_cast<MailboxObserver&>(*this));
    const std::lock_guard lock(mutex_);
    if (stopping_) work->Interrupt();
    work_ = work;
  }
  const MailboxWork::PassResult pass = work->Pass();
  if (!pass.Complete) return;
  backOff_.Succeeded();
  if (pass.Left == 0)
    Succeed();
  else if (!pass.Reason.empty())
    Fail(pass.Reason);
  work->Wait(kLongestWait);
}

void MailboxThread::Fail(const String& reason) {
  failing_ = true;
  if (reason == reason_) return;
  reason_ = reason;
  log_.Event(ServiceLog::Severity::Error, "failing", settings_.Name, reason);
}

void MailboxThread::Succeed() {
  failing_ = false;
  if (reason_.empty()) return;
  reason_.clear();
  log_.Event(ServiceLog::Severity::Notice, "working", settings_.Name, {});
}

void MailboxThread::Pause(std::chrono::milliseconds time) {
  WorkingFor(std::chrono::ceil<std::chrono::minutes>(time) + std::chrono::minutes(1));
  std::unique_lock lock(mutex_);
  wake_.wait_for(lock, time, [this] { return stopping_; });
}

bool MailboxThread::Stopping() {
  const std::lock_guard lock(mutex_);
  return stopping_;
}

}  // namespace Gateway
