// HeldReason: why a mail is held, as it is stored beside the mail.
#pragma once

#include <optional>
#include <string>

#include "platform/Text.h"

namespace Gateway {

using Platform::String;
using Platform::StringView;

// The rule of a mail of which only the header was read and is held, since the mail is beyond kLargestMail. It
// is never handed over: its reply would be empty, and the whole mail a duplicate of it.
inline constexpr const char* kHeaderOnlyRule = "header";

struct HeldReason {
  std::string Rule;  // the rule's name, as in MailResult
  String Reason;     // for people

  // As in RawMail, for a later try.
  std::optional<std::string> EnvelopeSender = {};

  // The mailbox's name as it is spelled. Keep sets it.
  String Mailbox = {};
};

// Stores the reason under the path, durably, in place of an earlier one. Raises 57 or 70.
void WriteHeldReason(const std::string& path, const HeldReason& reason);

// The reason, with empty texts where it is missing or damaged. Raises nothing but std::bad_alloc.
HeldReason ReadHeldReason(const std::string& path);

}  // namespace Gateway
