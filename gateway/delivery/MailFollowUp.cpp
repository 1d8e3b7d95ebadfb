#include "gateway/delivery/MailFollowUp.h"

#include "gateway/delivery/CutMarker.h"
#include "gateway/delivery/MailKey.h"
#include "gateway/policy/Authentication.h"
#include "gateway/policy/AutomaticMail.h"
#include "mime/DeliveryStatus.h"
#include "mime/LimitCheck.h"
#include "platform/Failure.h"
#include "platform/NoticeTexts.h"
#include "platform/Services.h"
#include "runtime/Texts.h"

namespace Gateway {
namespace {

namespace TextNumber = Platform::TextNumber;

// Of a mail that is too large to be read, this much is read for its sender and its text.
constexpr std::size_t kReadOfLargeMail = std::size_t{1} << 20;

bool IsReport(const Mime::Mail& mail) {
  constexpr StringView kReport = u"multipart/report";
  const Mime::HeaderField* type = Mime::FirstField(mail.Header, "Content-Type");
  if (!type) return false;
  const String value = Platform::Trim(Platform::FromUtf8(Mime::WithoutComments(type->Value)));
  return Platform::EqualsIgnoreCase(value.substr(0, kReport.size()), kReport);
}

String ReasonOf(const Mime::DeliveryStatus::Failure& failure) {
  String reason = failure.Recipient;
  for (const String& part : {failure.Status, failure.Diagnostic}) {
    if (!part.empty()) reason += u" " + part;
  }
  return reason;
}

// A forwarded mail fails for an address that isn't its recipient's, which the report may name as the original
// one; or the returned mail has it.
std::vector<String> AddressesIn(const Mime::DeliveryStatus& report) {
  std::vector<String> addresses{report.ReturnedTo};
  for (const Mime::DeliveryStatus::Failure& failure : report.Failures) {
    addresses.push_back(failure.Recipient);
    addresses.push_back(failure.Original);
  }
  return addresses;
}

// What was typed: the text above the cut marker, or all of it if there is nothing above.
String TypedText(Mime::Mail& mail) {
  const std::size_t cut = CutMarker().Repair(mail.Body);
  const String above = mail.Body.substr(0, cut);
  return above.find_first_not_of(u" \t\r\n\u00A0") == String::npos ? mail.Body : above;
}

void Warn(MailResult& result, std::int32_t text) {
  result.Warning = Runtime::TextOf(text, Platform::CurrentFailure().Description());
}

}  // namespace

const Platform::NoticeQueue& MailFollowUp::Queue() {
  if (!queue_) queue_.emplace(Platform::Services().CreateByName(Platform::NoticeQueue::kName));
  queue_->Open(project_.Path());
  return *queue_;
}

void MailFollowUp::CountBounces(const Mime::Mail& mail, const std::string& bytes, MailResult& result) try {
  if (!IsReport(mail)) return;
  const auto report = Mime::ReadDeliveryStatus(bytes);
  if (!report || report->MessageId.empty() || report->Failures.empty()) return;
  const Mime::DeliveryStatus::Failure& first = report->Failures.front();
  if (Queue().AddBounce(report->MessageId, AddressesIn(*report), ReasonOf(first)) ==
      Platform::BounceResult::OtherAddress)
    result.Warning = Runtime::TextOf(TextNumber::kBounceNotCounted,
                                     Runtime::TextOf(TextNumber::kBounceOfOther, first.Recipient));
} catch (const std::exception&) {
  Warn(result, TextNumber::kBounceNotCounted);
}

bool MailFollowUp::MayBeAnswered(const Mime::Mail& mail, const RawMail& raw,
                                 const Platform::MailSender& sender) {
  const GateFacts facts{.Mail = mail,
                        .EnvelopeSender = raw.EnvelopeSender,
                        .Sender = sender,
                        .MailboxAddress = project_.Address(),
                        .WhyEmpty = {}};
  return sender.MailAccepted && !RefuseAutomaticMail(facts, {}) && !RefuseUnauthenticated(facts, policy_);
}

void MailFollowUp::AnswerSender(const RawMail& raw, MailResult& result) try {
  Mime::Mail mail = Mime::ReadMail(
      raw.Bytes.substr(0, raw.Bytes.size() > policy_.SizeLimit ? kReadOfLargeMail : raw.Bytes.size()));
  if (!mail.FromAddress) return;
  const Platform::MailSender sender = project_.Intake().FindSender(*mail.FromAddress);
  if (!MayBeAnswered(mail, raw, sender)) return;
  const std::string key = result.Key.empty() ? MailKey(mail, raw.Bytes) : result.Key;
  result.Answered =
      Queue().AddAnswer({.UserKey = sender.UserKey,
                         .Key = Platform::FromUtf8(key),
                         .MessageId = mail.MessageId,
                         .Subject = mail.Subject,
                         .Text = TypedText(mail),
                         .Reason = result.Cause ? result.Cause->In(sender.Language) : result.Reason});
} catch (const Mime::LimitExceeded&) {
  // Its sender isn't known.
} catch (const std::exception&) {
  Warn(result, TextNumber::kSenderNotTold);
}

}  // namespace Gateway
