// MailboxCheck: proves that a mailbox can be served, without changing anything.
#pragma once

#include <string>
#include <vector>

#include "gateway/service/Configuration.h"

namespace Gateway {

struct CheckResult {
  std::string Name;  // "record", "project", "logon", "held", "source" or "sending"
  String Problem;    // what is wrong and what to do; empty if all is well
};

// Checks, in this order: the mailbox's record; its project's file and database; the logon to the project with
// the stored password, as the component does it for a mail; the folder of held mail; the queue, with its
// logon, if the settings name one; the server or command by which the project's mail is sent, if notices are
// sent. A check that needs one that failed is left out. A project of an older version is upgraded, as by any
// use. Raises nothing.
std::vector<CheckResult> CheckMailbox(StringView mailbox, const MailboxSettings* settings,
                                      const NoticeSettings& notices);

}  // namespace Gateway
