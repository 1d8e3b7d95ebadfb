// NoticeTexts: the numbers of the texts about mail that is sent: notices of replies and answers to senders.
// resources/TvMailRes.en.txt has them in English, with the meaning of their arguments.
#pragma once

#include <cstdint>

#include "platform/StoredNames.h"

namespace Platform::TextNumber {

// In the mails themselves.
inline constexpr std::int32_t kHowToAnswer = 21300;

// Why a mail can't be sent.
inline constexpr std::int32_t kSmtpHostInvalid = 21330;

// What waits to be sent, and what is done with it.
inline constexpr std::int32_t kNoticesInUse = 21360;

inline constexpr CatalogueText kNoticeTexts[] = {
    // In the mails themselves.
    {kHowToAnswer},
    // Why a mail can't be sent.
    {kSmtpHostInvalid, 1},
    // What waits to be sent, and what is done with it.
    {kNoticesInUse, 1},
};

}  // namespace Platform::TextNumber
