// SourceFailure: why a source can't be used, in the user's language.
#pragma once

#include <cstdint>
#include <string>

#include "gateway/sources/MailSource.h"

namespace Gateway {

// One of the TextNumber texts with its arguments, both UTF-8. Any thread.
std::string SourceText(std::int32_t text, const std::string& first = {}, const std::string& second = {});

// Gives a mail beyond kLargestMail, of which only the header was read, its fault.
void RefuseAsTooLarge(RawMail& mail);

// Raises a Failure with that text: 57 for a source that can't be used, 380 for settings that never can.
[[noreturn]] void RaiseSource(std::int32_t text, const std::string& first = {},
                              const std::string& second = {});
[[noreturn]] void RaiseSetting(std::int32_t text, const std::string& first, const std::string& second = {});

}  // namespace Gateway
