#include "gateway/delivery/MessageObject.h"

#include "platform/PropertyObject.h"
#include "runtime/MailAddress.h"

namespace Gateway {

using Platform::ObjectRef;
using Platform::PropertyObject;

ObjectRef MakeMessageObject(Mime::Mail mail) {
  const ObjectRef from =
      mail.FromAddress ? PropertyObject::Make({{u"Address", Runtime::CanonicalAddress(*mail.FromAddress)}})
                       : nullptr;
  return PropertyObject::Make({{u"Message", PropertyObject::Make({{u"From", from},
                                                                  {u"subject", std::move(mail.Subject)},
                                                                  {u"body", std::move(mail.Body)}})}});
}

}  // namespace Gateway
