#include "gateway/service/ServiceLoop.h"

#include <utility>

#include "gateway/service/RetryTimes.h"
#include "platform/Failure.h"

namespace Gateway {
namespace {

using Clock = std::chrono::steady_clock;

}  // namespace

ServiceLoop::ServiceLoop(String mailbox, Events events, ServiceLog& log, ServiceTask& task)
    : mailbox_(std::move(mailbox)), events_(events), log_(log), task_(task) {
  WorkingFor(std::chrono::minutes(1));
  thread_ = std::thread([this] { Run(); });
}

ServiceLoop::~ServiceLoop() {
  RequestStop();
  thread_.join();
}

void ServiceLoop::RequestStop() {
  {
    const std::lock_guard lock(mutex_);
    if (stopping_) return;
    stopping_ = true;
    wake_.notify_all();
  }
  task_.Interrupt();
}

void ServiceLoop::Wake() {
  const std::lock_guard lock(mutex_);
  woken_ = true;
  wake_.notify_all();
}

bool ServiceLoop::Alive() const {
  return Clock::now().time_since_epoch().count() < quietUntil_;
}

void ServiceLoop::Fail(const String& reason) {
  failing_ = true;
  if (reason == reason_) return;
  reason_ = reason;
  log_.Event(ServiceLog::Severity::Error, events_.Failing, mailbox_, reason);
}

void ServiceLoop::Succeed() {
  failing_ = false;
  if (reason_.empty()) return;
  reason_.clear();
  log_.Event(ServiceLog::Severity::Notice, events_.Working, mailbox_, {});
}

void ServiceLoop::WorkingFor(std::chrono::minutes longest) {
  quietUntil_ = (Clock::now() + longest).time_since_epoch().count();
}

void ServiceLoop::Pause(std::chrono::milliseconds time) {
  WorkingFor(std::chrono::ceil<std::chrono::minutes>(time) + std::chrono::minutes(1));
  std::unique_lock lock(mutex_);
  wake_.wait_for(lock, time, [this] { return stopping_ || woken_; });
  woken_ = false;
}

bool ServiceLoop::Stopping() {
  const std::lock_guard lock(mutex_);
  return stopping_;
}

void ServiceLoop::Run() {
  while (!Stopping()) {
    try {
      task_.Serve();
    } catch (const std::exception&) {
      if (Stopping()) break;
      Fail(Platform::CurrentFailure().Description());
      backOff_.Failed();
      BackOffPause();
    }
  }
  task_.Close();
}

// Wake doesn't end it: new mail is no reason to try again what failed.
void ServiceLoop::BackOffPause() {
  const auto time = backOff_.Pause(RandomPart());
  WorkingFor(std::chrono::ceil<std::chrono::minutes>(time) + std::chrono::minutes(1));
  std::unique_lock lock(mutex_);
  wake_.wait_for(lock, time, [this] { return stopping_; });
}

}  // namespace Gateway
