#include "host/SendingSession.h"
#include "platform/StoredNames.h"

#include <map>

#include "platform/Failure.h"
#include "platform/NumberReader.h"
#include "platform/Services.h"
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

// Properties that are only read.
class Properties : public Object {
 public:
  explicit Properties(std::map<StringView, Value> values) : values_(std::move(values)) {}
  Value Get(StringView member) override {
    const auto found = values_.find(member);
    return found == values_.end() ? Object::Get(member) : found->second;
  }

 private:
  std::map<StringView, Value> values_;
};

ObjectRef MakeProperties(std::map<StringView, Value> values) {
  return std::make_shared<Properties>(std::move(values));
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
    return 0;  // no number, or too large for one of the component
  }
}

ObjectRef MakeSession(const SendSettings& settings) {
  return MakeProperties({
      {u"SendLogon", MakeProperties({{u"Transport", settings.Transport}, {u"HostName", settings.HostName}})},
      {u"MAPIProfile", settings.MapiProfile},
      {u"User", MakeProperties({{u"Address", settings.Address}, {u"RealName", settings.RealName}})},
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
