#include "mime/HeaderText.h"
#include "mime/Mail.h"
#include "mime/MailBody.h"
#include "mime/MemoryNeed.h"
#include "mime/MessageParser.h"
#include "mime/SenderAddress.h"

namespace Mime {

Mail ReadMail(std::string bytes) {
  RequireMemoryFor(bytes.size());
  const ParsedMessage message(std::move(bytes));
  BodyText body = BodyOf(message);
  Mail mail;
  mail.FromAddress = SenderAddress(message, body.Charset);
  mail.MessageId = DecodeHeader(message.Field("Message-ID"));
  mail.Subject = DecodeHeader(message.Field("Subject"), body.Charset);
  mail.Body = std::move(body.Text);
  mail.Header = HeaderOf(message);
  mail.Encrypted = body.Encrypted;
  return mail;
}

}  // namespace Mime
