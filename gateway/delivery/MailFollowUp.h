// MailFollowUp: what a mail causes beside its reply: an answer to its sender, or, if it is a delivery report,
// that an address is counted as one that gets no mail.
//
// Nothing here changes a mail's outcome. A failure becomes the result's warning. One thread.
#pragma once

#include <optional>
#include <string>

#include "gateway/delivery/MailResult.h"
#include "gateway/delivery/MailboxProject.h"
#include "gateway/policy/PolicySettings.h"
#include "gateway/sources/MailSource.h"
#include "mime/Mail.h"
#include "platform/contracts/NoticeQueue.h"

namespace Gateway {

class MailFollowUp {
 public:
  // The project must outlive the object.
  MailFollowUp(MailboxProject& project, PolicySettings policy)
      : project_(project), policy_(std::move(policy)) {}

  // Counts each failed notice of the open project that a delivery report names (RFC 3464).
  void CountBounces(const Mime::Mail& mail, const std::string& bytes, MailResult& result);

  // Stores an answer with the reason and the text of a mail that is held, so that nothing typed is lost: only
  // to a user of the open project who takes mail, and never to automatic mail, or to a mail that may be
  // forged. Sets Answered.
  void AnswerSender(const RawMail& raw, MailResult& result);

 private:
  const Platform::NoticeQueue& Queue();
  bool MayBeAnswered(const Mime::Mail& mail, const RawMail& raw, const Platform::MailSender& sender);

  MailboxProject& project_;
  const PolicySettings policy_;
  std::optional<Platform::NoticeQueue> queue_;  // created when it is needed first
};

}  // namespace Gateway
