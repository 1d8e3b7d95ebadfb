// FailureText: how MailHandler_HandleMessage words what went wrong.
//
// The result is all that a host learns of a failure. A host that has to tell one failure from another words
// it here, as the component does, and compares. notice is the text of TextNumber::kMailNotice.
#pragma once

#include "platform/Failure.h"

namespace Platform {

// The result for an error text that a step noted.
inline String NotedFailureText(const String& notice, const String& errorText) {
  return notice + u" " + errorText;
}

// The result for a failure that ended the work.
inline String RaisedFailureText(const String& notice, const Failure& failure) {
  return failure.Description() + u" " + notice;
}

}  // namespace Platform
