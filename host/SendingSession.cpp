#include "host/SendingSession.h"

#include "platform/Failure.h"
#include "platform/NumberReader.h"
#include "platform/PropertyObject.h"
#include "platform/Services.h"
#include "platform/StoredNames.h"
#include "platform/contracts/GeneralServices.h"
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

std::int32_t TransportNumber(StringView stored) {
  try {
    const std::int32_t number = ReadInt32(stored);
    return number == TransportId::kMapi || number == TransportId::kSmtp ? number : 0;
  } catch (const Failure&) {
    return 0;  // no number, or out of range
  }
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
  const Files files(Services().CreateByName(u"TvGeneralServices.Files"));
  const ProjectFile project = files.RetrieveTVSFile(projectPath);
  if (!project) return {};
  const auto key = [&](StringView name) {
    return project.KeyValue(ProjectSection::kWritten, name).ToString();
  };
  const std::int32_t transport = TransportNumber(key(SendingValue::kTransportId));
  return {transport == TransportId::kMapi   ? MapiTransportName()
          : transport == TransportId::kSmtp ? SmtpTransportName()
                                            : String(),
          key(SendingValue::kMapiProfile), key(SendingValue::kHostName), key(SendingValue::kAddress),
          key(SendingValue::kRealName)};
}

}  // namespace Host
