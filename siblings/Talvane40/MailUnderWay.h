// MailUnderWay: the mail that a thread handles, between Begin and End of a MailIntake. A discussion of the
// same thread stores its key together with the reply.
#pragma once

#include <optional>
#include <string>

#include "platform/contracts/MailIntake.h"
#include "runtime/Database.h"

namespace Talvane40 {

using namespace Platform;

struct MailUnderWay {
  std::string Key;
  std::int32_t Author = 0;        // the key of the only user who may be the author of its replies; 0 for any
  const void* BegunBy = nullptr;  // the MailIntake, for comparison only
  Runtime::Durability Durability = Runtime::Durability::AtCommit;
  IntakeResult Result = IntakeResult::Nothing;
  std::string StoredIn = {};  // the file of the database, if Result is Stored
};

// A mail's idempotency key in lower case, as it is stored. Raises 380 unless it is 1 to
// MailIntake::kLongestKey hexadecimal digits.
std::string VettedKey(const Value& value);

// The one of the calling thread; nothing between mails.
std::optional<MailUnderWay>& MailOfThisThread();

}  // namespace Talvane40
