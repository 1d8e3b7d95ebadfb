// MailboxAddress: the e-mail address of a project's mailbox, which the project's file names.
#pragma once

#include "platform/Text.h"

namespace Gateway {

using Platform::String;
using Platform::StringView;

// The address in the project file's section [Email]; empty if there is none. Raises as
// Platform::Files::RetrieveTVSFile does.
String ReadMailboxAddress(const String& projectPath);

}  // namespace Gateway
