// Gate: decides which mail is handed over to the component.
//
// The component stores the mail of anyone who knows a discussion's subject, and that of programs too. The
// gate refuses such mail before. It reads no store and gives the same result for the same
// facts. Each rule has a file of its own. The size is checked earlier, before a mail is parsed:
// see MailSize.h.
#pragma once

#include <optional>
#include <string>

#include "gateway/policy/PolicySettings.h"
#include "gateway/policy/Refusal.h"
#include "mime/Mail.h"
#include "platform/contracts/MailIntake.h"

namespace Gateway {

// What is known of a mail.
struct GateFacts {
  const Mime::Mail& Mail;

  // The envelope's sender, empty for the null return path; nothing if the source doesn't know it.
  std::optional<std::string> EnvelopeSender;

  // The user of the project who has the sender's address.
  Platform::MailSender Sender;

  // The address of the mailbox; empty if it has none.
  String MailboxAddress;

  // Why the reply has no text of its own, as WhyReplyIsEmpty says; nothing if it has one.
  std::optional<Refusal> WhyEmpty;
};

// The first rule's refusal that applies, or nothing for a mail to be handed over. The rule that names
// the cause is applied first: a program's mail is refused as such also if its sender is unknown and its text
// is empty. Raises nothing but std::bad_alloc. Any thread.
std::optional<Refusal> RefusalOf(const GateFacts& facts, const PolicySettings& settings);

}  // namespace Gateway
