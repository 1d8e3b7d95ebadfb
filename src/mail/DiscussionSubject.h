// DiscussionSubject: reads the discussion's number from the subject line of a reply.
//
// A valid line contains, anywhere and in any order, "(Ostrand Talvane Project " and the word "Discussion"
// followed by a blank, a number and a closing bracket; "Ostrand Talvane Discussion " is preferred to the word
// alone. Case counts. Any thread; no state.
#pragma once

#include <cstdint>

#include "platform/Text.h"

namespace TvEmailServices {

using namespace Platform;

// Sets number, and subjectText to the text before the project marker, untrimmed. False with errorText: the
// text kNoDiscussionSubject if the number isn't numeric or below 1, a failure's description for a missing
// marker or a number beyond 32 bits. subjectText is set also for a refused number; number only on true,
// errorText only on false.
bool ParseDiscussionSubject(StringView line, std::int32_t& number, String& subjectText, String& errorText);

}  // namespace TvEmailServices
