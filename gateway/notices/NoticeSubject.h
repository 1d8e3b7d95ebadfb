// NoticeSubject: the subject of a notification, by which the component finds the discussion of an answer.
//
// The component reads the first of each marker in a subject, so that no other text may hold one. The mail
// programs of those who answer add "Re:", and encode and fold the subject in their own ways; some cut it at
// 255 characters.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/Text.h"

namespace Gateway {

using Platform::String;
using Platform::StringView;

// The subject in the pieces of Mime::TextMail::Subject: the title, and the markers with the project's
// name and the discussion's number. Title and name are shortened. cutMarker is the line of the body that the
// component looks for; mail programs quote the subject above it. Any thread.
std::vector<String> NoticeSubject(StringView title, StringView projectName, std::int32_t discussion,
                                  StringView cutMarker);

// The text on one line: with one blank for control characters and line ends, and without characters that
// change the writing direction of what follows. A marker of a subject or a body in it is no marker any more:
// its blanks become hyphens, which mail programs keep as they are. Any thread.
String WithoutMarkers(StringView text, StringView cutMarker);

}  // namespace Gateway
