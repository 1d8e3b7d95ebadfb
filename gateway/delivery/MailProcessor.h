// MailProcessor: turns the mails of one mailbox into replies, one after the other.
#pragma once

#include <memory>
#include <span>

#include "gateway/delivery/MailResult.h"
#include "gateway/delivery/PreparedMail.h"
#include "gateway/policy/PolicySettings.h"
#include "gateway/sources/MailSource.h"

namespace Gateway {

struct DeliverySettings {
  PolicySettings Policy;
  bool Hold = false;  // keep refused mail, with its reason
  int HeldDays = 90;  // how long held mail is kept

  // Of the mailbox, whose own mail is refused; empty for the one in the project's file.
  String Address;

  // Tell a user of the project why a mail is held.
  bool AnswerSenders = true;

  friend bool operator==(const DeliverySettings&, const DeliverySettings&) = default;
};

// Each object has its own handler object of the component. Created, used and destroyed on one thread; the
// objects of several threads don't wait for each other, except for the stores.
class MailProcessor {
 public:
  // The mailbox is found in any case. Raises 429, with the reason, if the component or a sibling can't be
  // created.
  MailProcessor(String mailbox, DeliverySettings settings);
  MailProcessor(const MailProcessor&) = delete;
  MailProcessor& operator=(const MailProcessor&) = delete;
  ~MailProcessor();

  // From now on Delivered and Duplicate are durable only after Sync. For many mails, of which none is removed
  // from its source before that.
  void SyncLater();

  // Waits until the mails with these results are on disk. False if the disk reports an error: Delivered and
  // Duplicate become Retry then, and no other mail should be processed. Raises nothing.
  bool Sync(std::span<MailResult> results);

  // Decides what becomes of a mail, and does it. Delivered, Duplicate and Held are durable when this returns,
  // but see SyncLater.
  // Reads the mailbox's record for each mail, so that a change takes effect at once; a missing record gives
  // Retry. Raises nothing.
  MailResult Process(RawMail raw);
  MailResult Process(PreparedMail mail);  // of PrepareMail with the policy of the settings

  // Removes held mails that are old enough, as Process does when it holds one. A service calls it again and
  // again, since it may be long until the next mail is refused; it works once a day. Raises nothing.
  void ExpireHeld();

 private:
  class Work;
  std::unique_ptr<Work> work_;
};

}  // namespace Gateway
