// FailureText: the failure texts that MailHandler_HandleMessage gives.
//
// The component composes its result here. A host that must distinguish failures composes the texts that it
// looks for by the same functions, and compares. notice is the text of TextNumber::kMailNotice.
#pragma once

#include "platform/Failure.h"

namespace Platform {

// The result for an error text.
inline String NotedFailureText(const String& notice, const String& errorText) {
  return notice + u" " + errorText;
}

// The result for a raised failure.
inline String RaisedFailureText(const String& notice, const Failure& failure) {
  return failure.Description() + u" " + notice;
}

}  // namespace Platform
