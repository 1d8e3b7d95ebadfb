// ImapQueue: the unread mail of a mailbox on an IMAP server as a queue.
#pragma once

#include <memory>
#include <vector>

#include "gateway/sources/ImapSession.h"
#include "gateway/sources/MailQueue.h"

namespace Gateway {

// Mail that is neither read nor deleted is the queue, so nothing about it is stored here: each pass searches
// for it, and uses the unique ids within one session only, where UIDVALIDITY can't change. Mail that is
// passed isn't marked as read before it is settled. A mail that was handled just before the connection broke
// is passed again, and recognised by its key.
//
// Of a mail that is too large, only the header is passed. It is never deleted, only marked or moved.
//
// The session stays open for Wait. It is opened again if the server has closed it meanwhile.
class ImapQueue : public MailQueue {
 public:
  explicit ImapQueue(const QueueSettings& settings);

  bool Pass(const MailSink& sink) override;
  void Wait(std::chrono::milliseconds longest) override;
  void Interrupt() override { interruption_.Set(); }
  void Check() override;

 private:
  // The unread mails, in an open session.
  std::vector<std::uint32_t> Unread();

  // Returns false if the sink ended the work, or after an interruption.
  bool PassEach(const MailSink& sink);
  bool PassOne(const ImapSession::Mail& mail, const MailSink& sink);

  void WaitInSession(std::chrono::milliseconds longest);

  const QueueSettings settings_;
  Interruption interruption_;
  std::unique_ptr<ImapSession> session_;
  std::vector<std::uint32_t> left_;  // the mails that the last pass left unread, ascending
};

}  // namespace Gateway
