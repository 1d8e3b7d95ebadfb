#include "gateway/delivery/MailboxHandler.h"

#include <utility>

#include "gateway/delivery/MessageObject.h"
#include "platform/Failure.h"

namespace Gateway {

MailboxHandler::MailboxHandler(const String& mailbox) {
  object_.Mail().MailHandler_Initialize(mailbox, nullptr);
}

MailboxHandler::~MailboxHandler() {
  CloseProject();
}

String MailboxHandler::Handle(Mime::Mail mail) const {
  try {
    return object_.Mail().MailHandler_HandleMessage(MakeMessageObject(std::move(mail)));
  } catch (const std::exception&) {
    return Platform::CurrentFailure().Description();
  }
}

void MailboxHandler::CloseProject() const {
  object_.Mail().MailHandler_Finalize();
}

}  // namespace Gateway
