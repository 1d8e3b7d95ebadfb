// MailQueue: a source of mails that is emptied again and again: a Maildir, or a mailbox of an IMAP or POP3
// server.
#pragma once

#include <chrono>
#include <memory>

#include "gateway/sources/MailSource.h"
#include "gateway/sources/QueueSettings.h"

namespace Gateway {

// One thread; Interrupt also on others. Every failure of a source has number 57 and says what to check.
class MailQueue {
 public:
  virtual ~MailQueue() = default;

  // Passes each waiting mail to the sink. After Delivered, Duplicate and Held the mail leaves the queue, as
  // it is configured: moved, marked or deleted. After any other outcome it stays and is passed again by a
  // later call. Returns false if the sink ended the work, or after Interrupt. Raises the reason if the source
  // can't be reached or read; mails that the sink handled before are then settled or passed again.
  virtual bool Pass(const MailSink& sink) = 0;

  // Returns when new mail may be waiting, after the longest time, or after Interrupt. Raises as Pass.
  virtual void Wait(std::chrono::milliseconds longest) = 0;

  // Ends Pass between two mails, and Wait and each wait for a server at once; a mail that was handled has
  // another 0.5 s to be settled on its server. The queue can't be used afterwards. Any thread.
  virtual void Interrupt() = 0;

  // Proves that the queue can be reached and read: folder, connection, certificate, logon, mailbox. Changes
  // nothing. Raises what is wrong.
  virtual void Check() = 0;
};

// A queue as the settings describe it. Opens no connection and no file yet. Raises 380, saying what is
// missing, for settings that no server can meet.
std::unique_ptr<MailQueue> MakeQueue(const QueueSettings& settings);

}  // namespace Gateway
