// SenderAnswers: the answers to senders whose mail was refused. They are sent as notices.
#pragma once

#include "platform/contracts/NoticeQueue.h"
#include "runtime/Database.h"

namespace Talvane40 {

// As NoticeQueue::AddAnswer, for a key as it is stored. Raises 57 if the database can't be written.
bool AddAnswer(Runtime::Database& database, const Platform::RefusedMail& mail);

// The text, or as much of it as the length allows without half of a character.
Platform::String Shortened(Platform::String text, std::size_t longest);

}  // namespace Talvane40
