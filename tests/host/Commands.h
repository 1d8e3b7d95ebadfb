// Commands: the program in a folder of its own.
#pragma once

#include "tests/support/Program.h"

namespace Tests {

class Commands : public testing::Test {
 protected:
  Program program;
};

// With the mailbox Apollo, bound to apollo.TVS.
class MailboxCommands : public Commands {
 protected:
  MailboxCommands() { program.SetUp(); }
};

}  // namespace Tests
