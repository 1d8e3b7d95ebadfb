#include "gateway/delivery/HandlerObject.h"

#include "platform/Failure.h"
#include "platform/Object.h"
#include "runtime/Libraries.h"

namespace Gateway {

using namespace Platform;

HandlerObject::HandlerObject() {
  const ObjectRef object =
      Runtime::LoadClassFactory(u"TvEmailServices.so", EMailManagerClass).CreateInstance();
  mail_ = std::dynamic_pointer_cast<MailHandler>(object);
  manager_ = std::dynamic_pointer_cast<EMailManagerInterface>(object);
  if (!mail_ || !manager_) Raise(FailureNumber::CannotCreate, u"TvEmailServices.EMailManager");
}

}  // namespace Gateway
