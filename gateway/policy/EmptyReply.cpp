#include "gateway/policy/EmptyReply.h"

#include "mime/MailCharacters.h"
#include "platform/ProgramTexts.h"

namespace Gateway {

namespace TextNumber = Platform::TextNumber;

std::optional<Refusal> WhyReplyIsEmpty(const Mime::Mail& mail, std::size_t cut, StringView marker) {
  const StringView body = mail.Body;
  if (!Mime::IsBlankText(body.substr(0, cut))) return std::nullopt;
  const auto reason = [&](std::int32_t number) { return MakeRefusal(Rule::kEmpty, number, marker); };
  if (mail.Encrypted) return reason(TextNumber::kEncryptedMail);
  if (cut == StringView::npos) return reason(TextNumber::kMailWithoutText);
  const bool textBelow = !Mime::IsBlankText(body.substr(cut + marker.size()));
  return reason(textBelow ? TextNumber::kTextBelowMarkerOnly : TextNumber::kNoTextAboveMarker);
}

std::optional<Refusal> RefuseEmptyReply(const GateFacts& facts, const PolicySettings& settings) {
  return settings.PostEmpty ? std::nullopt : facts.WhyEmpty;
}

}  // namespace Gateway
