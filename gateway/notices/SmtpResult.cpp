#include "gateway/notices/SmtpResult.h"

#include "gateway/notices/ForeignText.h"
#include "platform/NoticeTexts.h"
#include "platform/ProgramTexts.h"
#include "runtime/Texts.h"

namespace Gateway {
namespace {

namespace TextNumber = Platform::TextNumber;
using Fault = SmtpDialogue::Fault;
using Kind = SendResult::Kind;
using Runtime::TextOf;
using Stage = SmtpDialogue::Stage;

SendResult ResultOf(Fault fault, const String& server, const String& answer, const String& recipient) {
  switch (fault) {
    case Fault::TooLong:
      return {Kind::Unreachable, TextOf(TextNumber::kAnswerTooLarge, server)};
    case Fault::NoEncryption:
      return {Kind::Unreachable, TextOf(TextNumber::kTlsFailed, server, answer)};
    case Fault::NoLogon:
      return {Kind::Unreachable, TextOf(TextNumber::kSmtpNoLogon, server)};
    case Fault::NoUtf8:
      return {Kind::Refused, TextOf(TextNumber::kSmtpNoUtf8, server, recipient)};
    case Fault::NotSmtp:
    case Fault::None:
      break;
  }
  return {Kind::Unreachable, TextOf(TextNumber::kAnswerCode, server, answer)};
}

SendResult Permanent(const SmtpDialogue& dialogue, const String& server, const String& answer) {
  constexpr int kTooLarge = 552, kLogonRequired = 530;
  const auto because = [&](Kind kind, std::int32_t text) {
    return SendResult{kind, TextOf(text, server, answer)};
  };
  switch (dialogue.At()) {
    case Stage::Greeting:
    case Stage::Hello:
    case Stage::StartTls:
      return because(Kind::Unreachable, TextNumber::kSmtpServerRefuses);
    case Stage::Logon:
      return because(Kind::Unreachable, TextNumber::kSmtpLogonRefused);
    case Stage::Sender:
      if (dialogue.Code() == kTooLarge) break;
      return because(Kind::Unreachable, TextNumber::kSmtpSenderRefused);
    case Stage::Recipient:
      if (dialogue.Code() == kLogonRequired)
        return because(Kind::Unreachable, TextNumber::kSmtpSenderRefused);
      // Servers have no code of its own for it. Others may be recipients at the server itself.
      if (Platform::FoldCase(answer).find(u"relay") != String::npos)
        return because(Kind::Deferred, TextNumber::kSmtpSenderRefused);
      break;
    case Stage::Data:
    case Stage::Content:
      break;
  }
  return because(Kind::Refused, TextNumber::kSmtpMailRefused);
}

}  // namespace

std::optional<SendResult> SmtpResult(const SmtpDialogue& dialogue, const String& server,
                                     const String& recipient) {
  constexpr int kClosing = 421;
  const String answer = ForeignText(dialogue.Text());
  if (dialogue.Found() != Fault::None) return ResultOf(dialogue.Found(), server, answer, recipient);
  const int code = dialogue.Code();
  const bool content = dialogue.At() == Stage::Content;
  if (code / 100 == 5) return Permanent(dialogue, server, answer);
  if (code / 100 == 4) {
    const bool others = code == kClosing || dialogue.At() < Stage::Sender;
    return SendResult{others ? Kind::Unreachable : Kind::Deferred,
                      TextOf(TextNumber::kSmtpMailDeferred, server, answer)};
  }
  if (content && code / 100 == 2) return SendResult{};
  if (content) return SendResult{Kind::Deferred, TextOf(TextNumber::kSmtpNotConfirmed, server)};
  return std::nullopt;
}

}  // namespace Gateway
