// MessageObject: a mail as the object that the component reads.
#pragma once

#include "mime/Mail.h"
#include "platform/Object.h"

namespace Gateway {

// An object for which MailMessage is the proxy. It has no From if the mail has no address.
Platform::ObjectRef MakeMessageObject(Mime::Mail mail);

}  // namespace Gateway
