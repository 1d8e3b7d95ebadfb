// HandlerObject: one handler object of the component, got from its library's class factory and no other way.
#pragma once

#include <memory>

#include "platform/contracts/MailHandler.h"

namespace Gateway {

class HandlerObject {
 public:
  // Raises 429, with the reason, where the library or one of its interfaces can't be had.
  HandlerObject();

  Platform::MailHandler& Mail() const { return *mail_; }
  Platform::EMailManagerInterface& Manager() const { return *manager_; }

 private:
  std::shared_ptr<Platform::MailHandler> mail_;
  std::shared_ptr<Platform::EMailManagerInterface> manager_;
};

}  // namespace Gateway
