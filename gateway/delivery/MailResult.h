// MailResult: the outcome of a mail with its details, for reports, the status and the log.
#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "gateway/policy/Refusal.h"
#include "gateway/sources/Outcome.h"
#include "platform/Text.h"

namespace Gateway {

using Platform::String;

struct MailResult {
  std::string Source;  // as RawMail names it
  String MessageId;    // with its angle brackets; empty without one, and if the mail was not read
  std::string Key;     // the idempotency key (MailKey.h); empty if the mail was not read
  Outcome Result = Outcome::Retry;

  // Why the mail was refused, held or has to be tried again: a sentence in the user's language. Empty after
  // Delivered and Duplicate.
  String Reason;

  // Which rule refused the mail, for logs: "size", "automatic", "authentication", "strangers", "empty",
  // "limit" for a limit of the reader, "header" if no more was read, or "component". Empty if none did.
  std::string Rule;

  // The same reason for the mail's sender, in any language. Only of refused and held mail, and nothing if the
  // reason is known in the user's language alone.
  std::optional<Refusal> Cause;

  bool ReplyStored = false;  // a reply was stored now; false for a duplicate
  String Failure;            // the component's text; empty if it has no complaint, or wasn't called
  String WhyEmpty;           // why a reply that was delivered has no visible text; empty if it has some
  bool Answered = false;     // the sender will be notified by mail why the mail is held
  String Warning;            // what else failed, which changes no outcome; in the user's language
  std::chrono::milliseconds Duration{0};
};

}  // namespace Gateway
