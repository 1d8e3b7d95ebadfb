#include "gateway/sources/SourceFailure.h"

#include "mime/Limits.h"
#include "platform/Failure.h"
#include "platform/ProgramTexts.h"
#include "runtime/Texts.h"

namespace Gateway {
namespace {

[[noreturn]] void RaiseText(std::int32_t number, const std::string& text) {
  throw Platform::Failure(number, u"Gateway.MailQueue", Platform::FromUtf8(text));
}

}  // namespace

std::string SourceText(std::int32_t text, const std::string& first, const std::string& second) {
  return Platform::ToUtf8(Runtime::TextOf(text, Platform::FromUtf8(first), Platform::FromUtf8(second)));
}

void RefuseAsTooLarge(RawMail& mail) {
  mail.Fault = SourceText(Platform::TextNumber::kMailBeyondLimit, std::to_string(Mime::kLargestMail >> 20));
  mail.FaultOutcome = Outcome::Refused;
}

void RaiseSource(std::int32_t text, const std::string& first, const std::string& second) {
  RaiseText(Platform::FailureNumber::DeviceFailed, SourceText(text, first, second));
}

void RaiseSetting(std::int32_t text, const std::string& first, const std::string& second) {
  RaiseText(Platform::FailureNumber::RefusedInput, SourceText(text, first, second));
}

}  // namespace Gateway
