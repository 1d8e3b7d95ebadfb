// Bounces: delivery reports which say that notices didn't arrive. After three, the user gets no more mail
// until the address or the wish for mail is set again: a trigger then deletes them.
#pragma once

#include <vector>

#include "platform/contracts/NoticeQueue.h"
#include "runtime/Database.h"
#include "siblings/Talvane40/NoticeIds.h"

namespace Talvane40 {

// As NoticeQueue::AddBounce. Raises 57 if the database can't be written.
Platform::BounceResult AddBounce(Runtime::Database& database, const NoticeIds& ids,
                                 Platform::StringView messageId,
                                 const std::vector<Platform::String>& addresses, Platform::StringView reason);

// The addresses that get no mail, the first 1,000.
std::vector<Platform::String> StoppedAddresses(Runtime::Database& database);

}  // namespace Talvane40
