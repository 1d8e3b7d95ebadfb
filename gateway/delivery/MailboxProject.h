// MailboxProject: the project of a mailbox, as the mailbox's record names it now.
#pragma once

#include "gateway/delivery/MailboxAddress.h"
#include "platform/contracts/MailIntake.h"

namespace Gateway {

// One thread.
class MailboxProject {
 public:
  // The mailbox is found in any case. Raises 429 without a sibling.
  explicit MailboxProject(String mailbox);

  // Opens the project that the record names. False if it is open already; true if the record names another
  // one, or if other files are in its place, so that the component has to open it again too. Raises 57 if
  // there is no record or its store can't be read, and as Platform::MailIntake::Open does.
  bool Open();

  // Of the open project.
  const String& Path() const { return path_; }

  // For the open project.
  const Platform::MailIntake& Intake() const { return intake_; }

  // The e-mail address of the open project's mailbox; empty if there is none. Raises as MailboxAddress does.
  const String& Address() { return address_.Of(path_); }

 private:
  const String mailbox_;
  const Platform::MailIntake intake_;
  String path_;
  MailboxAddress address_;
};

}  // namespace Gateway
