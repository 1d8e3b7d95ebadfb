// ExitCode: the exit codes of all commands of tvmail, and which failure gives which.
#pragma once

#include "platform/Failure.h"

namespace Host {

// The codes of sysexits.h, by which a mail server decides what to do with the mail.
enum ExitCode : int {
  Done = 0,
  WrongUse = 64,         // the command line is wrong
  DataRefused = 65,      // the input is refused; trying again won't help
  CannotCreate = 73,     // the stores can't be created, or permission for a file is missing
  TryAgain = 75,         // anything else; nothing is lost
  Cancelled = TryAgain,  // the user cancelled the dialog or ended the input
  NotConfigured = 78,    // no such mailbox, no stores
};

// The code of a failure by its number. A number that isn't listed gives TryAgain.
ExitCode CodeOf(std::int32_t failureNumber);

// The code of an operation that the component reported as failed, decided by the listed failures that were
// raised during it: TryAgain if one of them gives that, otherwise the code of the last one. Gives
// withoutFailure if none was raised. Failures that aren't listed are part of the component's normal work.
ExitCode CodeOf(const Platform::FailureWatch& watch, ExitCode withoutFailure);

}  // namespace Host
