#include "gateway/sources/ImapQueue.h"

#include <algorithm>

#include "gateway/sources/SourceFailure.h"
#include "mime/Limits.h"
#include "platform/Failure.h"

namespace Gateway {
namespace {

// The number of mails whose sizes one command asks for.
constexpr std::size_t kSizesAtOnce = 500;

}  // namespace

ImapQueue::ImapQueue(const QueueSettings& settings) : settings_(settings) {}

void ImapQueue::Check() {
  ImapSession session(settings_, interruption_);
  session.Open(true);
  if (settings_.After == AfterSuccess::Move) session.RequireMailbox(settings_.MoveTo);
}

std::vector<std::uint32_t> ImapQueue::Unread() {
  if (session_) {
    try {
      return session_->Unread();
    } catch (const Platform::Failure&) {
      // The server has closed the session since its last use.
      session_.reset();
      if (interruption_.IsSet()) throw;
    }
  }
  auto session = std::make_unique<ImapSession>(settings_, interruption_);
  session->Open(false);
  session_ = std::move(session);
  return session_->Unread();
}

bool ImapQueue::Pass(const MailSink& sink) {
  try {
    return !interruption_.IsSet() && PassEach(sink) && !interruption_.IsSet();
  } catch (const Platform::Failure&) {
    session_.reset();
    if (interruption_.IsSet()) return false;
    throw;
  } catch (...) {
    session_.reset();
    throw;
  }
}

bool ImapQueue::PassEach(const MailSink& sink) {
  left_.clear();
  const std::vector<std::uint32_t> uids = Unread();
  for (auto begin = uids.begin(); begin != uids.end();) {
    const auto end = begin + std::min<std::ptrdiff_t>(kSizesAtOnce, uids.end() - begin);
    for (const ImapSession::Mail& mail : session_->Sizes({begin, end})) {
      if (interruption_.IsSet() || !PassOne(mail, sink)) return false;
    }
    begin = end;
  }
  return true;
}

bool ImapQueue::PassOne(const ImapSession::Mail& mail, const MailSink& sink) {
  RawMail raw{"imap://" + settings_.Host + "/" + settings_.Mailbox + "/;UID=" + std::to_string(mail.Uid),
              {},
              {},
              Outcome::Retry};
  const bool large = mail.Size > Mime::kLargestMail;
  if (!session_->Fetch(mail, large, raw.Bytes)) return true;
  if (large) RefuseAsTooLarge(raw);
  const std::optional<Outcome> outcome = sink(std::move(raw));
  if (!outcome) return false;
  if (!IsSettled(*outcome)) {
    left_.push_back(mail.Uid);
  } else {
    const bool keep = large && settings_.After == AfterSuccess::Delete;
    session_->Settle(mail.Uid, keep ? AfterSuccess::Mark : settings_.After);
  }
  return true;
}

void ImapQueue::Wait(std::chrono::milliseconds longest) {
  try {
    if (session_)
      WaitInSession(longest);
    else
      interruption_.Wait(-1, 0, longest);
  } catch (const Platform::Failure&) {
    session_.reset();
    if (!interruption_.IsSet()) throw;
  }
}

void ImapQueue::WaitInSession(std::chrono::milliseconds longest) {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + longest;
  while (!interruption_.IsSet()) {
    const std::vector<std::uint32_t> unread = session_->Unread();
    if (!std::includes(left_.begin(), left_.end(), unread.begin(), unread.end())) return;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
    if (left.count() <= 0) return;
    if (session_->CanIdle())
      session_->Idle(std::min(left, settings_.IdleRestart));
    else
      interruption_.Wait(-1, 0, std::min(left, settings_.PollInterval));
  }
}

}  // namespace Gateway
