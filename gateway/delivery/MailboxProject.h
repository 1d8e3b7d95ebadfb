// MailboxProject: the project of a mailbox, as the mailbox's record names it now.
#pragma once

#include <optional>

#include "platform/contracts/MailIntake.h"

namespace Gateway {

using Platform::String;

// One thread.
class MailboxProject {
 public:
  // The mailbox is found in any case. The address is the mailbox's; empty for the one in the project's file.
  // Raises 429 without a sibling.
  MailboxProject(String mailbox, String address);

  // Opens the project that the record names. False if it is open already; true if the record names another
  // one, or if its files were changed or replaced, so that the component has to open it again too. Raises 57
  // if there is no record or its store can't be read, and as Platform::MailIntake::Open does.
  bool Open();

  // Of the open project.
  const String& Path() const { return path_; }

  // For the open project.
  const Platform::MailIntake& Intake() const { return intake_; }

  // The e-mail address of the mailbox; empty if there is none. Raises as ReadMailboxAddress does.
  const String& Address();

 private:
  const String mailbox_, setAddress_;
  const Platform::MailIntake intake_;
  String path_;
  std::optional<String> address_;  // nothing if it has to be read
};

}  // namespace Gateway
