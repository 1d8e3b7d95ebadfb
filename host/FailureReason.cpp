#include "host/FailureReason.h"

#include "platform/Failure.h"

namespace Host {
namespace {

namespace Number = Platform::FailureNumber;

// The entries of the user raise other failures, for which the component's text says what to correct.
bool IsOfStorage(const Platform::Failure& failure) {
  return failure.Number() == Number::DeviceFailed || failure.Number() == Number::PermissionDenied;
}

}  // namespace

String WithReason(StringView boxText) {
  String text = Platform::Trim(boxText);
  // The first failure is the cause of the others. One that contains its text is more detailed.
  String reason;
  for (const Platform::Failure& failure : Platform::FailureWatch::TakeNew()) {
    if (IsOfStorage(failure) && failure.Description().find(reason) != String::npos)
      reason = failure.Description();
  }
  if (text.find(reason) == String::npos) text.append(u"\n").append(reason);
  return text;
}

}  // namespace Host
