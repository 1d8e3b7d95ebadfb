// ExitCode: the codes that all commands of tvmail end with.
#pragma once

namespace Host {

// The codes of sysexits, so that a mail server can tell what to do with the mail.
enum ExitCode : int {
  Done = 0,
  WrongUse = 64,       // the command line is wrong
  DataRefused = 65,    // the input is at fault; trying again won't help
  CannotCreate = 73,   // a file can't be made
  TryAgain = 75,       // anything else; nothing is lost, try again
  NotConfigured = 78,  // no such mailbox, no stores
};

}  // namespace Host
