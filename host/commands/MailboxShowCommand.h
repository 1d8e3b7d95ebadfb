// MailboxShowCommand: adds "tvmail mailbox show".
#pragma once

#include "host/commands/Command.h"

namespace Host {

void AddMailboxShowCommand(CLI::App& mailbox, Invocation& invocation);

}  // namespace Host
