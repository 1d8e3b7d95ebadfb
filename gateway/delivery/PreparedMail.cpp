#include "gateway/delivery/PreparedMail.h"

#include <new>
#include <utility>

#include "gateway/delivery/MailKey.h"
#include "gateway/policy/MailSize.h"
#include "mime/LimitCheck.h"
#include "platform/Failure.h"
#include "platform/ProgramTexts.h"
#include "platform/ReasonTexts.h"
#include "runtime/Texts.h"

namespace Gateway {

String CurrentReason() {
  try {
    throw;
  } catch (const std::bad_alloc&) {
    return Runtime::TextOf(Platform::TextNumber::kNotEnoughMemory);
  } catch (const std::exception&) {
    return Platform::CurrentFailure().Description();
  }
}

PreparedMail PrepareMail(RawMail raw, const PolicySettings& policy) {
  const auto begin = std::chrono::steady_clock::now();
  PreparedMail mail;
  mail.Raw = std::move(raw);
  try {
    if (!mail.Raw.Fault.empty()) return mail;
    mail.Refused = RefuseSize(mail.Raw.Bytes.size(), policy);
    if (mail.Refused) return mail;
    // The reader changes its copy.
    mail.Read = Mime::ReadMail(mail.Raw.Bytes);
    mail.Key = MailKey(*mail.Read, mail.Raw.Bytes);
  } catch (const Mime::LimitExceeded& limit) {
    mail.Refused = Refusal{.Rule = kLimitRule,
                           .Text = Platform::TextNumber::kRefusedUnread,
                           .First = Platform::FromUtf8(std::to_string(limit.Limit())),
                           .FirstText = limit.Text()};
  } catch (const std::exception&) {
    mail.Failed = CurrentReason();
  }
  mail.Duration = std::chrono::steady_clock::now() - begin;
  return mail;
}

}  // namespace Gateway
