#include "gateway/delivery/MailboxAddress.h"

#include "platform/Services.h"
#include "platform/StoredNames.h"
#include "platform/contracts/GeneralServices.h"

namespace Gateway {

String ReadMailboxAddress(const String& projectPath) {
  const Platform::Files files(Platform::Services().CreateByName(u"TvGeneralServices.Files"));
  const Platform::Value address =
      files.RetrieveTVSFile(projectPath)
          .KeyValue(Platform::ProjectSection::kRead, Platform::SendingValue::kAddress);
  return address.IsString() ? Platform::Trim(address.ToString()) : String();
}

}  // namespace Gateway
