// Pop3Queue: the mail of a mailbox on a POP3 server as a queue.
#pragma once

#include <optional>
#include <unordered_set>

#include "gateway/sources/MailQueue.h"
#include "gateway/sources/Pop3Session.h"
#include "gateway/sources/SettledMails.h"

namespace Gateway {

// A POP3 server removes mail only at the end of a session, so with Delete a session ends after some mails; a
// crash repeats at most these, and they are recognised by their keys. With Mark the mail stays, and its id is
// stored. Of a mail that is too large, only the header is passed, and it always stays on the server.
class Pop3Queue : public MailQueue {
 public:
  explicit Pop3Queue(const QueueSettings& settings);

  bool Pass(const MailSink& sink) override;
  void Wait(std::chrono::milliseconds longest) override;
  void Interrupt() override { interruption_.Set(); }
  void Check() override;

 private:
  enum class Ending { AllPassed, SessionFull, Ended };

  // One session. passed has the ids of the mails that this pass needs not try again.
  Ending PassSession(const MailSink& sink, std::unordered_set<std::string>& passed);
  std::optional<Outcome> PassOne(Pop3Session& session, const Pop3Session::Mail& mail, const MailSink& sink);

  const QueueSettings settings_;
  Interruption interruption_;
  std::optional<SettledMails> settled_;
};

}  // namespace Gateway
