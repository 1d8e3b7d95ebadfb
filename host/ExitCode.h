// ExitCode: the codes that all commands of tvmail end with, and which failure gives which.
#pragma once

#include "platform/Failure.h"

namespace Host {

// The codes of sysexits, so that a mail server can tell what to do with the mail.
enum ExitCode : int {
  Done = 0,
  WrongUse = 64,         // the command line is wrong
  DataRefused = 65,      // the input is at fault; trying again won't help
  CannotCreate = 73,     // the stores can't be created, or permission for a file is missing
  TryAgain = 75,         // anything else; nothing is lost, try again
  Cancelled = TryAgain,  // a person closed the dialog or ended the input
  NotConfigured = 78,    // no such mailbox, no stores
};

// The code of a failure by its number. A number that isn't listed gives TryAgain.
ExitCode CodeOf(std::int32_t failureNumber);

// The code of an act that the component reported as failed, by the failures that were raised during it and
// are listed: TryAgain if one of them gives that, else the code of the last, or the given one where there was
// none. Failures that aren't listed are part of the component's usual work.
ExitCode CodeOf(const Platform::FailureWatch& watch, ExitCode withoutFailure);

}  // namespace Host
