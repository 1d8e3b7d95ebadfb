#include "gateway/sources/Pop3Queue.h"

#include <algorithm>

#include "gateway/sources/SourceFailure.h"
#include "mime/Limits.h"
#include "platform/Failure.h"
#include "platform/ProgramTexts.h"

namespace Gateway {
namespace {

// Deletions of one session.
constexpr std::size_t kDeletionsAtOnce = 200;

}  // namespace

Pop3Queue::Pop3Queue(const QueueSettings& settings) : settings_(settings) {}

void Pop3Queue::Check() {
  Pop3Session session(settings_, interruption_);
  session.List();
  session.Quit();
}

bool Pop3Queue::Pass(const MailSink& sink) {
  try {
    if (!settled_) settled_.emplace(settings_.User + "@" + settings_.Host);
    std::unordered_set<std::string> passed;
    Ending ending = Ending::SessionFull;
    while (ending == Ending::SessionFull && !interruption_.IsSet()) ending = PassSession(sink, passed);
    return ending == Ending::AllPassed && !interruption_.IsSet();
  } catch (const Platform::Failure&) {
    if (interruption_.IsSet()) return false;
    throw;
  }
}

Pop3Queue::Ending Pop3Queue::PassSession(const MailSink& sink, std::unordered_set<std::string>& passed) {
  Pop3Session session(settings_, interruption_);
  const std::vector<Pop3Session::Mail> mails = session.List();
  std::unordered_set<std::string> present;
  for (const Pop3Session::Mail& mail : mails) present.insert(mail.Id);
  settled_->KeepOnly(present);
  Ending ending = Ending::AllPassed;
  std::size_t deletions = 0;
  for (const Pop3Session::Mail& mail : mails) {
    if (settled_->Contains(mail.Id) || !passed.insert(mail.Id).second) continue;
    const std::optional<Outcome> outcome =
        interruption_.IsSet() ? std::nullopt : PassOne(session, mail, sink);
    if (!outcome) ending = Ending::Ended;
    if (!outcome) break;
    if (!IsSettled(*outcome)) continue;
    if (settings_.After != AfterSuccess::Delete || mail.Size > Mime::kLargestMail) {
      settled_->Add(mail.Id);
      continue;
    }
    session.Delete(mail);
    if (++deletions == kDeletionsAtOnce) ending = Ending::SessionFull;
    if (ending == Ending::SessionFull) break;
  }
  session.Quit();
  return ending;
}

std::optional<Outcome> Pop3Queue::PassOne(Pop3Session& session, const Pop3Session::Mail& mail,
                                          const MailSink& sink) {
  RawMail raw{"pop://" + settings_.Host + "/" + mail.Id, {}, {}, Outcome::Retry};
  const bool large = mail.Size > Mime::kLargestMail;
  if (!session.Fetch(mail, large, raw.Bytes)) {
    raw.Fault = SourceText(Platform::TextNumber::kMailUnreadable, session.Reason());
    return sink(std::move(raw));
  }
  if (large) RefuseAsTooLarge(raw);
  return sink(std::move(raw));
}

void Pop3Queue::Wait(std::chrono::milliseconds longest) {
  interruption_.Wait(-1, 0, std::min(longest, settings_.PollInterval));
}

}  // namespace Gateway
