// MessageObject: a mail as the component asks for it.
#pragma once

#include "mime/Mail.h"
#include "platform/Object.h"

namespace Gateway {

// An object with the property Message, and of that From (nothing without an address), subject and body; of
// From Address.
Platform::ObjectRef MakeMessageObject(Mime::Mail mail);

}  // namespace Gateway
