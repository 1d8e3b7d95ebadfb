// MailHandler: the two interfaces through which the handler object is called.
//
// The component implements both on one object; the mail-reader host calls MailHandler, the project tool calls
// EMailManagerInterface, each on the thread that created the object.
#pragma once

#include <cstdint>

#include "platform/Guid.h"
#include "platform/Value.h"

namespace Platform {

// The host's interface, in slot order. Order of calls for messages: Initialize, HandleMessage for each,
// Finalize. For configuring: Configure, then MboxUpdate on the same object. MboxDelete stands alone.
class MailHandler {
 public:
  virtual ~MailHandler();

  virtual void MailHandler_Initialize(const String& arg, const ObjectRef& MBUser) = 0;

  // The empty string when the message was handled without complaint, otherwise a failure text.
  virtual String MailHandler_HandleMessage(const ObjectRef& mess) = 0;

  virtual void MailHandler_Finalize() = 0;

  // Shows the mailbox dialog; AddMode is non-zero for a new mailbox. True: MboxUpdate may follow.
  virtual Boolean MailHandler_Configure(std::int16_t AddMode, String& MailBoxName, String& ProductName,
                                        const ObjectRef& Sess) = 0;

  // True when the mailbox was stored.
  virtual Boolean MailHandler_MboxUpdate(const String& MailBoxName, const ObjectRef& Sess) = 0;

  virtual void MailHandler_MboxDelete(const String& MailBoxName) = 0;
};

// The default interface of the class; its published name is "_EMailManager", which C++ keeps to itself.
class EMailManagerInterface {
 public:
  virtual ~EMailManagerInterface();

  // Shows the outbound dialog. True when the user has configured outbound e-mail in it.
  virtual Boolean ConfigureOutBoundEmail() = 0;
};

inline constexpr Guid EMailManagerClass = "{3C5B41E6-0C1B-4B57-8D6A-7E2F0E9A1001}"_guid;
inline constexpr Guid EMailManagerInterfaceId = "{3C5B41E6-0C1B-4B57-8D6A-7E2F0E9A1002}"_guid;
inline constexpr Guid MailHandlerInterfaceId = "{3C5B41E6-0C1B-4B57-8D6A-7E2F0E9A1003}"_guid;

}  // namespace Platform
