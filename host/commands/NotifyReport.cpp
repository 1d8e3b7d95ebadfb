#include "host/commands/NotifyReport.h"

#include <algorithm>
#include <iostream>

#include "platform/Json.h"
#include "platform/TerminalText.h"

namespace Host {
namespace {

using Kind = Gateway::SendResult::Kind;

// For programs and for people, English in every language.
struct Words {
  const char *Json, *Text;
};

Words WordsOf(Kind kind) {
  switch (kind) {
    case Kind::Sent:
      return {"sent", "sent"};
    case Kind::Refused:
      return {"givenUp", "given up"};
    case Kind::Deferred:
    case Kind::Unreachable:
      break;
  }
  return {"deferred", "deferred"};
}

std::string JsonLine(const String& mailbox, const DueNotice& notice, const Gateway::SendResult& result) {
  return JsonObject()
      .Add("mailbox", mailbox)
      .Add("address", notice.Recipient.Address)
      .Add("kind", notice.Kind == NoticeKind::Reply ? u"reply" : u"answer")
      .Add("discussion", static_cast<std::size_t>(notice.Discussion))
      .Add("reply", static_cast<std::size_t>(notice.Reply.Number))
      .Add("outcome", FromUtf8(WordsOf(result.Result).Json))
      .Add("reason", result.Reason)
      .Text();
}

std::string TextLine(const String& mailbox, const DueNotice& notice, const Gateway::SendResult& result) {
  const std::string what = notice.Kind == NoticeKind::Reply
                               ? "discussion " + std::to_string(notice.Discussion) + ", reply " +
                                     std::to_string(notice.Reply.Number)
                               : "answer";
  return TerminalLine(mailbox) + "  " + TerminalLine(notice.Recipient.Address) + "  " + what + "  " +
         WordsOf(result.Result).Text + (result.Reason.empty() ? "" : ": " + TerminalLine(result.Reason));
}

}  // namespace

void NotifyReport::Add(const String& mailbox, const DueNotice& notice, const Gateway::SendResult& result) {
  std::cout << (json_ ? JsonLine(mailbox, notice, result) : TextLine(mailbox, notice, result)) << '\n'
            << std::flush;
}

void NotifyReport::EndMailbox(const Gateway::NoticeSender::PassResult& pass) {
  sent_ += pass.Sent;
  deferred_ += pass.Deferred;
  givenUp_ += pass.Refused;
  postponed_ += pass.Postponed;
  if (pass.Next) next_ = next_ ? std::min(*next_, *pass.Next) : *pass.Next;
}

void NotifyReport::Limited(const String& mailbox, std::int32_t waiting, int perMinute,
                           std::chrono::milliseconds time) {
  if (waiting == 0) return;
  limited_ = true;
  const auto seconds = std::chrono::ceil<std::chrono::seconds>(time).count();
  if (json_)
    std::cout << JsonObject()
                     .Add("mailbox", mailbox)
                     .Add("outcome", u"limited")
                     .Add("waiting", static_cast<std::size_t>(waiting))
                     .Add("perMinute", static_cast<std::size_t>(perMinute))
                     .Add("seconds", static_cast<std::size_t>(seconds))
                     .Text()
              << '\n';
  else
    std::cout << TerminalLine(mailbox) << "  " << waiting << (waiting == 1 ? " mail waits" : " mails wait")
              << " for the limit of " << perMinute << " a minute: run tvmail notify again in " << seconds
              << " s\n";
}

void NotifyReport::Dropped(const String& mailbox, std::int32_t count) {
  const auto number = static_cast<std::size_t>(count);
  if (json_)
    std::cout << JsonObject().Add("mailbox", mailbox).Add("dropped", number).Text() << '\n';
  else
    std::cout << TerminalLine(mailbox) << "  " << number << (number == 1 ? " mail" : " mails")
              << " dropped: no user is notified by mail\n";
}

void NotifyReport::Fail(const String& mailbox, const String& reason) {
  failed_ = true;
  std::cerr << "tvmail: " << TerminalLine(mailbox + u": " + reason) << '\n';
}

bool NotifyReport::Finish(bool stopped, bool dropping) {
  if (!json_ && !dropping) {
    const std::size_t all = sent_ + deferred_ + givenUp_;
    if (all == 0 && (failed_ || stopped || limited_))
      std::cout << "nothing was sent";
    else if (all == 0)
      std::cout << "nothing was due";
    else
      std::cout << all << (all == 1 ? " mail: " : " mails: ") << sent_ << " sent, " << deferred_
                << " deferred, " << givenUp_ << " given up";
    if (postponed_ > 0)
      std::cout << "; " << postponed_ << " not tried, since the server or the command can't be used now";
    if (next_)
      std::cout << "; more is due in " << std::chrono::ceil<std::chrono::seconds>(*next_).count() << " s";
    if (stopped) std::cout << "; stopped before the end";
    std::cout << '\n';
  }
  return !stopped && !failed_ && deferred_ + givenUp_ == 0;
}

}  // namespace Host
