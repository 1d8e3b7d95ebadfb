#include "gateway/delivery/Delivery.h"

#include <algorithm>

#include "gateway/delivery/CutMarker.h"
#include "gateway/delivery/EmptyReply.h"
#include "gateway/delivery/FailureJudge.h"
#include "gateway/delivery/HandlerObject.h"
#include "gateway/delivery/MessageObject.h"
#include "gateway/sources/StopSignal.h"
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

Outcome Deliver(const String& mailBox, const std::vector<std::string>& sources, StandardInput input,
                DeliveryReport& report) {
  const HandlerObject object;
  Platform::MailHandler& handler = object.Mail();
  handler.MailHandler_Initialize(mailBox, nullptr);

  FailureJudge judge;
  CutMarker marker;
  const auto handle = [&](RawMail raw) -> std::optional<Outcome> {
    if (StopWanted()) return std::nullopt;
    if (!raw.Fault.empty()) {
      report.Add(raw.Source, {}, Platform::FromUtf8(raw.Fault), {raw.FaultOutcome});
      return raw.FaultOutcome;
    }
    String messageId;
    const Runtime::ClassLookupScope lookup;
    try {
      Mime::Mail mail = Mime::ReadMail(std::move(raw.Bytes));
      messageId = mail.MessageId;
      RequireText(marker);
      const std::size_t cut = marker.Repair(mail.Body);
      std::string whyEmpty = WhyReplyIsEmpty(mail, cut, marker);
      const String failure = handler.MailHandler_HandleMessage(MakeMessageObject(std::move(mail)));
      Verdict verdict = judge.Judge(failure);
      if (verdict.Result == Outcome::Delivered) verdict.WhyEmpty = std::move(whyEmpty);
      report.Add(raw.Source, messageId, failure, verdict);
      return verdict.Result;
    } catch (const Mime::LimitExceeded& limit) {
      report.Add(raw.Source, messageId,
                 Runtime::TextOf(Platform::TextNumber::kRefusedUnread, Platform::FromUtf8(limit.what())),
                 {Outcome::Refused});
      return Outcome::Refused;
    } catch (const std::exception&) {
      report.Add(raw.Source, messageId, Platform::CurrentFailure().Description(), {Outcome::Retry});
      return Outcome::Retry;
    }
  };
  const bool all = std::all_of(sources.begin(), sources.end(), [&](const std::string& source) {
    return ReadMailSource(source, input, handle);
  });
  handler.MailHandler_Finalize();
  return report.Finish(!all);
}

}  // namespace Gateway
