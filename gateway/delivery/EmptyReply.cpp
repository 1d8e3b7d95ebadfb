#include "gateway/delivery/EmptyReply.h"

#include "gateway/delivery/MailCharacters.h"

namespace Gateway {

std::string WhyReplyIsEmpty(const Mime::Mail& mail, std::size_t cut, CutMarker& marker) {
  const StringView body = mail.Body;
  if (!IsBlankText(body.substr(0, cut))) return {};
  if (mail.Encrypted) return "the reply is empty: the mail is encrypted; send it without encryption";
  if (cut == StringView::npos) return "the reply is empty: the mail has no text";
  const String text = marker.OriginalText();
  const bool textBelow = !IsBlankText(body.substr(cut + text.size()));
  return "the reply is empty: the mail has no text above the line \"" + Platform::ToUtf8(text) + "\"" +
         (textBelow ? ", and the text below it is not read" : "");
}

}  // namespace Gateway
