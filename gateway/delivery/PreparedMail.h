// PreparedMail: a mail with all that its bytes alone decide.
#pragma once

#include <chrono>
#include <optional>

#include "gateway/policy/PolicySettings.h"
#include "gateway/policy/Refusal.h"
#include "gateway/sources/MailSource.h"
#include "mime/Mail.h"

namespace Gateway {

// The name of the rule of the limits beyond which no mail is read.
inline constexpr std::string_view kLimitRule = "limit";

struct PreparedMail {
  RawMail Raw;
  std::optional<Mime::Mail> Read;  // nothing if it couldn't be read
  std::string Key;                 // the idempotency key; empty if it couldn't be made
  std::optional<Refusal> Refused;  // of a mail that is too large, or beyond a limit
  String Failed;                   // why it couldn't be read now, in the user's language
  std::chrono::steady_clock::duration Duration{};
};

// Reads a mail, unless it has a fault. Neither the registry nor a project is asked, so it may be done long
// before the mail is handled. Raises nothing. Any thread.
PreparedMail PrepareMail(RawMail raw, const PolicySettings& policy);

// Why the exception that is handled was raised, in the user's language. Raises std::bad_alloc.
String CurrentReason();

}  // namespace Gateway
