// DiscussionSubject: what the subject line of an answer tells of the discussion that it answers.
//
// A good line holds, anywhere and in any order, "(Ostrand Talvane Project " and the word "Discussion"
// followed by a blank, a number and a closing bracket; "Ostrand Talvane Discussion " is the preferred place
// of that word. Letters count in their case. Keeps nothing; called on the thread of the message.
#pragma once

#include <cstdint>

#include "platform/Text.h"

namespace TvEmailServices {

using namespace Platform;

// Gives the discussion's number and the text in front of the project marker, untrimmed. False: errorText
// holds the text of 10005 for a number that is none or is below 1, and the failure's description for a line
// without its markers or with a number beyond 32 bits; otherwise errorText stays untouched. The subject text
// is stored as soon as it is found, also for a line whose number is refused; number is stored for a good line
// alone.
bool ParseDiscussionSubject(StringView line, std::int32_t& number, String& subjectText, String& errorText);

}  // namespace TvEmailServices
