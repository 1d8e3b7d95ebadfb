// MailboxHandler: the component's handler object for the messages of one mailbox.
#pragma once

#include "gateway/delivery/HandlerObject.h"
#include "mime/Mail.h"

namespace Gateway {

using Platform::String;

// The handler keeps the project open between mails. It stores the mail of a sender whom the project doesn't
// know under the name of the previous sender. One thread.
class MailboxHandler {
 public:
  // Raises 429 without the component.
  explicit MailboxHandler(const String& mailbox);
  MailboxHandler(const MailboxHandler&) = delete;
  MailboxHandler& operator=(const MailboxHandler&) = delete;
  ~MailboxHandler();

  // The component's result; also the text of what it raises.
  String Handle(Mime::Mail mail) const;

  // Closes the project; the next mail opens the one of the mailbox's record.
  void CloseProject() const;

 private:
  const HandlerObject object_;
};

}  // namespace Gateway
