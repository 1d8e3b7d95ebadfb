#include "gateway/delivery/EmptyReply.h"

#include "gateway/delivery/MailCharacters.h"
#include "platform/StoredNames.h"
#include "runtime/Texts.h"

namespace Gateway {
namespace {

namespace TextNumber = Platform::TextNumber;

// Never empty, since an empty text stands for a reply with text.
String Reason(std::int32_t number, StringView marker = {}) {
  const String text = Runtime::TextOf(number, marker);
  return text.empty() ? u"the reply is empty" : text;
}

}  // namespace

String WhyReplyIsEmpty(const Mime::Mail& mail, std::size_t cut, CutMarker& marker) {
  const StringView body = mail.Body;
  if (!IsBlankText(body.substr(0, cut))) return {};
  if (mail.Encrypted) return Reason(TextNumber::kEncryptedMail);
  if (cut == StringView::npos) return Reason(TextNumber::kMailWithoutText);
  const String text = marker.OriginalText();
  const bool textBelow = !IsBlankText(body.substr(cut + text.size()));
  return Reason(textBelow ? TextNumber::kTextBelowMarkerOnly : TextNumber::kNoTextAboveMarker, text);
}

}  // namespace Gateway
