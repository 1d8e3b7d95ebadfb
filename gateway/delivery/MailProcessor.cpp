#include "gateway/delivery/MailProcessor.h"

#include "gateway/delivery/CutMarker.h"
#include "gateway/delivery/FailureJudge.h"
#include "gateway/delivery/HandlerObject.h"
#include "gateway/delivery/MessageObject.h"
#include "gateway/policy/EmptyReply.h"
#include "mime/LimitCheck.h"
#include "platform/Failure.h"
#include "platform/StoredNames.h"
#include "runtime/ClassLookup.h"
#include "runtime/Texts.h"

namespace Gateway {
namespace {

// Without the text of the cut marker the component would store the reply with all that it answers.
void RequireText(CutMarker& marker) {
  if (!marker.OriginalText().empty()) return;
  throw Platform::Failure(Platform::FailureNumber::DeviceFailed, u"Gateway",
                          u"The text of the cut marker can't be loaded: install TvResourceServices.so and "
                          u"the TvComRes catalogues, and register them by tvmail init.");
}

}  // namespace

class MailProcessor::Work {
 public:
  Work(const String& mailbox, const DeliverySettings& settings) : settings_(settings) {
    object_.Mail().MailHandler_Initialize(mailbox, nullptr);
  }
  ~Work() { object_.Mail().MailHandler_Finalize(); }
  Work(const Work&) = delete;
  Work& operator=(const Work&) = delete;

  void Process(RawMail raw, MailResult& result) {
    if (!raw.Fault.empty()) {
      result.Result = raw.FaultOutcome;
      result.Reason = Platform::FromUtf8(raw.Fault);
      return;
    }
    Mime::Mail mail = Mime::ReadMail(std::move(raw.Bytes));
    result.MessageId = mail.MessageId;
    RequireText(marker_);
    const std::size_t cut = marker_.Repair(mail.Body);
    String whyEmpty = WhyReplyIsEmpty(mail, cut, marker_.OriginalText());
    result.Failure = object_.Mail().MailHandler_HandleMessage(MakeMessageObject(std::move(mail)));
    const Verdict verdict = judge_.Judge(result.Failure);
    result.Result = verdict.Result;
    result.Reason = verdict.Reason;
    if (verdict.Result == Outcome::Delivered) result.WhyEmpty = std::move(whyEmpty);
  }

 private:
  const DeliverySettings settings_;
  const HandlerObject object_;
  FailureJudge judge_;
  CutMarker marker_;
};

MailProcessor::MailProcessor(String mailbox, DeliverySettings settings)
    : work_(std::make_unique<Work>(mailbox, settings)) {}

MailProcessor::~MailProcessor() = default;

MailResult MailProcessor::Process(RawMail raw) {
  const auto begin = std::chrono::steady_clock::now();
  const Runtime::ClassLookupScope lookup;
  MailResult result;
  result.Source = raw.Source;
  try {
    work_->Process(std::move(raw), result);
  } catch (const Mime::LimitExceeded& limit) {
    result.Result = Outcome::Refused;
    result.Reason = Runtime::TextOf(Platform::TextNumber::kRefusedUnread, Platform::FromUtf8(limit.what()));
  } catch (const std::exception&) {
    result.Result = Outcome::Retry;
    result.Reason = Platform::CurrentFailure().Description();
  }
  result.Duration =
      std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - begin);
  return result;
}

}  // namespace Gateway
