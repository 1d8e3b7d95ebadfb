#include "host/OutboundSettings.h"

#include <unistd.h>

#include "gateway/notices/ProjectSending.h"
#include "host/RegistryKey.h"
#include "platform/StoredNames.h"

namespace Host {

bool OutboundSettings::Complete() const {
  if (!Configured || !Enabled) return false;
  if (Transport == TransportId::kMapi) return !Profile.empty();
  return Transport == TransportId::kSmtp && !HostName.empty() && !Address.empty();
}

NoticeRoute OutboundSettings::Route() const {
  const auto uid = static_cast<std::int32_t>(getuid());
  if (Transport == TransportId::kMapi) return {Transport, Profile, {}, {}, uid};
  return {Transport, HostName, Address, RealName, uid};
}

OutboundSettings ReadOutboundSettings() {
  const auto key = RegistryKey::Open(Hive::CurrentUser, RegistryPath::kOutbound);
  if (!key) return {};
  const auto text = [&key](StringView name) { return Trim(key->Text(name)); };
  const String transport = text(SendingValue::kTransportId);
  return {true,
          !EqualsIgnoreCase(text(SendingValue::kEnabled), u"False"),
          Gateway::TransportNumber(transport),
          transport,
          text(SendingValue::kMapiProfile),
          text(SendingValue::kHostName),
          text(SendingValue::kAddress),
          text(SendingValue::kRealName)};
}

}  // namespace Host
