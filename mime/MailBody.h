// MailBody: the text of a mail among its parts.
#pragma once

#include <gmime/gmime.h>

#include "platform/Text.h"

namespace Mime {

using Platform::String;

// The text of the first text/plain part that is no attachment, format=flowed undone; without one, the text of
// the first HTML part; without either, the empty string. Parts are walked depth first; an attached message is
// not entered. No other part is decoded.
String BodyOf(GMimeMessage* message);

}  // namespace Mime
