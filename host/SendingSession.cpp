#include "host/SendingSession.h"

#include <utility>

#include "gateway/notices/ProjectSending.h"
#include "platform/PropertyObject.h"
#include "platform/Services.h"
#include "platform/StoredNames.h"
#include "platform/contracts/ResourceServices.h"
#include "runtime/Folders.h"

namespace Host {

namespace {

String TransportName(std::int32_t text) {
  const Resource texts(Services().CreateByName(u"TvResourceServices.Resource"));
  texts.LoadResources(Runtime::LibraryFolder() + u"\\TvEmailServicesRes.dll", u"TvEmailServices");
  return texts.ResourceString(text);
}

}  // namespace

String MapiTransportName() {
  return TransportName(TextNumber::kMapiName);
}
String SmtpTransportName() {
  return TransportName(TextNumber::kSmtpName);
}

ObjectRef MakeSession(const SendSettings& settings) {
  return PropertyObject::Make({
      {u"SendLogon",
       PropertyObject::Make({{u"Transport", settings.Transport}, {u"HostName", settings.HostName}})},
      {u"MAPIProfile", settings.MapiProfile},
      {u"User", PropertyObject::Make({{u"Address", settings.Address}, {u"RealName", settings.RealName}})},
  });
}

SendSettings ReadSendSettings(const String& projectPath) {
  Gateway::ProjectSending sending = Gateway::ReadProjectSending(projectPath);
  return {sending.Transport == TransportId::kMapi   ? MapiTransportName()
          : sending.Transport == TransportId::kSmtp ? SmtpTransportName()
                                                    : String(),
          std::move(sending.MapiProfile), std::move(sending.HostName), std::move(sending.Address),
          std::move(sending.RealName)};
}

}  // namespace Host
