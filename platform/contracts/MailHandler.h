// MailHandler: the two interfaces of the component's handler object.
//
// The mail-reader host calls MailHandler, the project tool EMailManagerInterface, on the thread that created
// the object. No operation raises a failure that a mail, a store or a dialog causes.
#pragma once

#include <cstdint>

#include "platform/Guid.h"
#include "platform/Value.h"

namespace Platform {

// The host's interface, in slot order. Calls for messages: Initialize, HandleMessage for each, Finalize. For
// configuring: Configure, then MboxUpdate on the same object. MboxDelete needs no other call.
class MailHandler {
 public:
  virtual ~MailHandler();

  // Sets the mailbox; blanks around its name are ignored. MBUser isn't used.
  virtual void MailHandler_Initialize(const String& arg, const ObjectRef& MBUser) = 0;

  // Stores a mail as a reply. The empty string on success, otherwise a failure text (see FailureText.h). With
  // a text the reply may have been stored all the same: a sender who isn't known doesn't end the work.
  virtual String MailHandler_HandleMessage(const ObjectRef& mess) = 0;

  // Closes the project; the next message opens it again. Safe to repeat.
  virtual void MailHandler_Finalize() = 0;

  // Shows the mailbox dialog; AddMode is non-zero for a new mailbox. True: MboxUpdate may follow. Sets
  // ProductName, and MailBoxName to the project's name. Failures are shown in message boxes.
  virtual Boolean MailHandler_Configure(std::int16_t AddMode, String& MailBoxName, String& ProductName,
                                        const ObjectRef& Sess) = 0;

  // Stores the mailbox. False after a message box if it can't be stored completely.
  virtual Boolean MailHandler_MboxUpdate(const String& MailBoxName, const ObjectRef& Sess) = 0;

  // Removes the e-mail settings from the mailbox's project, and keeps its record. Failures are shown.
  virtual void MailHandler_MboxDelete(const String& MailBoxName) = 0;
};

// The default interface of the class. Its published name is "_EMailManager", a reserved name in C++.
class EMailManagerInterface {
 public:
  virtual ~EMailManagerInterface();

  // Shows the outbound dialog. True if the user has saved outbound settings in it. Failures are shown.
  virtual Boolean ConfigureOutBoundEmail() = 0;
};

inline constexpr Guid EMailManagerClass = "{3C5B41E6-0C1B-4B57-8D6A-7E2F0E9A1001}"_guid;
inline constexpr Guid EMailManagerInterfaceId = "{3C5B41E6-0C1B-4B57-8D6A-7E2F0E9A1002}"_guid;
inline constexpr Guid MailHandlerInterfaceId = "{3C5B41E6-0C1B-4B57-8D6A-7E2F0E9A1003}"_guid;

}  // namespace Platform
