#include "gateway/notices/NoticeRoutes.h"

#include <algorithm>
#include <iterator>

namespace Gateway {
namespace {

using std::chrono::seconds;

constexpr seconds kShortestPause(5);
constexpr seconds kLongestPause(3600);
constexpr seconds kIdle(10);

}  // namespace

seconds NoticePause(std::int32_t failures) {
  if (failures <= 0) return seconds(0);
  // Beyond the doublings that reach the longest pause, a shift would overflow.
  const auto doublings = std::min(failures - 1, 16);
  return std::min<seconds>(kShortestPause * (1L << doublings), kLongestPause);
}

NoticeRoutes::Attempt NoticeRoutes::SendBySmtp(const String& host, const OutgoingMail& mail) {
  return Send("smtp " + Platform::ToUtf8(host), mail,
              [&] { return MakeSmtpTransport(host, settings_.ServerOf(host)); });
}

NoticeRoutes::Attempt NoticeRoutes::SendByCommand(const String& command, const OutgoingMail& mail) {
  return Send("command " + Platform::ToUtf8(command), mail, [&] { return MakeCommandTransport(command); });
}

template <class Make>
NoticeRoutes::Attempt NoticeRoutes::Send(const std::string& key, const OutgoingMail& mail, Make make) {
  using Kind = SendResult::Kind;
  Route& route = routes_[key];
  if (const auto now = Clock::now(); now < route.Closed)
    return {{Kind::Unreachable, route.Reason}, false, std::chrono::ceil<seconds>(route.Closed - now)};
  if (!route.Transport) route.Transport = make();
  if (!SetCurrent(route.Transport.get())) return {{Kind::Unreachable, {}}, false, {}};
  SendResult result = route.Transport->Send(mail);
  SetCurrent(nullptr);
  route.Used = Clock::now();
  if (Interrupted() && result.Result == Kind::Unreachable) return {std::move(result), false, {}};
  if (result.Result != Kind::Unreachable) {
    route.Failures = 0;
    return {std::move(result), true, {}};
  }
  const seconds pause = NoticePause(++route.Failures);
  route.Closed = route.Used + pause;
  route.Reason = result.Reason;
  route.Transport.reset();
  return {std::move(result), true, pause};
}

// False after Interrupt.
bool NoticeRoutes::SetCurrent(MailTransport* transport) {
  const std::lock_guard lock(mutex_);
  current_ = interrupted_ ? nullptr : transport;
  return !interrupted_;
}

void NoticeRoutes::Reopen() {
  for (auto& [key, route] : routes_) {
    route.Closed = {};
    route.Failures = 0;
  }
}

void NoticeRoutes::CloseIdle() {
  const auto now = Clock::now();
  for (auto entry = routes_.begin(); entry != routes_.end();) {
    Route& route = entry->second;
    if (now - route.Used > kIdle) route.Transport.reset();
    // The failures of a server are remembered for longer than its longest pause.
    const bool failed = route.Failures > 0 && now - route.Used < 2 * kLongestPause;
    entry = route.Transport || failed ? std::next(entry) : routes_.erase(entry);
  }
}

void NoticeRoutes::Interrupt() {
  const std::lock_guard lock(mutex_);
  interrupted_ = true;
  if (current_) current_->Interrupt();
}

bool NoticeRoutes::Interrupted() {
  const std::lock_guard lock(mutex_);
  return interrupted_;
}

}  // namespace Gateway
