// HandlerObject: a handler object of the component, created by its library's class factory.
#pragma once

#include <memory>

#include "platform/contracts/MailHandler.h"

namespace Gateway {

class HandlerObject {
 public:
  // Raises 429, with the reason, if the library or one of its interfaces isn't available.
  HandlerObject();

  Platform::MailHandler& Mail() const { return *mail_; }
  Platform::EMailManagerInterface& Manager() const { return *manager_; }

 private:
  std::shared_ptr<Platform::MailHandler> mail_;
  std::shared_ptr<Platform::EMailManagerInterface> manager_;
};

}  // namespace Gateway
