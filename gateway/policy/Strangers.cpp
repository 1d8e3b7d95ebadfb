#include "gateway/policy/Strangers.h"

#include "platform/ProgramTexts.h"

namespace Gateway {

namespace TextNumber = Platform::TextNumber;

std::optional<Refusal> RefuseStranger(const GateFacts& facts, const PolicySettings& settings) {
  if (settings.PostStrangers) return std::nullopt;
  const std::optional<String>& from = facts.Mail.FromAddress;
  if (!from) return MakeRefusal(Rule::kStrangers, TextNumber::kMailWithoutSender);
  if (!facts.Sender.Found) return MakeRefusal(Rule::kStrangers, TextNumber::kStrangerRefused, *from);
  if (!facts.Sender.MailAccepted) return MakeRefusal(Rule::kStrangers, TextNumber::kUserTakesNoMail, *from);
  return std::nullopt;
}

}  // namespace Gateway
