#include "src/outbound/OutboundStore.h"

#include "platform/Failure.h"
#include "platform/StoredNames.h"
#include "src/mailbox/RegistryValues.h"
#include "src/services/modComponents.h"
#include "src/services/modMain.h"

namespace TvEmailServices {
namespace {

bool SetTransport(const RegUtil& registry, std::int32_t transport) {
  return SetRegStringValue(registry, SendingValue::kTransportId, Value(transport).ToString());
}

}  // namespace

bool OpenOutboundKey(RegUtil& registry) try {
  registry = GetRegUtil(Hive::CurrentUser, RegistryPath::kTalvane, true);
  if (!registry) return Refuse(TextNumber::kKeyNotReached);
  if (registry.DropToSubKey(RegistryPath::kOutboundKey)) return true;
  if (!registry.AddKey(RegistryPath::kOutboundKey)) {
    ShowResourceMessageV(TextNumber::kKeyNotAdded, {RegistryPath::kOutboundKey});
    return false;
  }
  if (!registry.DropToSubKey(RegistryPath::kOutboundKey)) {
    ShowResourceMessageV(TextNumber::kPathRefused, {RegistryPath::kOutbound});
    return false;
  }
  return true;
} catch (...) {
  return ReportFailure();
}

bool SaveMapiOutbound(const String& profile) try {
  if (profile.empty()) return Refuse(TextNumber::kNoProfile);
  RegUtil registry;
  return OpenOutboundKey(registry) && SetRegStringValue(registry, SendingValue::kMapiProfile, profile) &&
         SetTransport(registry, TransportId::kMapi);
} catch (...) {
  return ReportFailure();
}

bool SaveSmtpOutbound(const String& hostName, const String& emailAddress, const String& realName) try {
  if (hostName.empty()) return Refuse(TextNumber::kNoHostName);
  if (emailAddress.empty()) return Refuse(TextNumber::kNoAddress);
  RegUtil registry;
  return OpenOutboundKey(registry) && SetRegStringValue(registry, SendingValue::kHostName, hostName) &&
         SetRegStringValue(registry, SendingValue::kAddress, emailAddress) &&
         SetRegStringValue(registry, SendingValue::kRealName, realName) &&
         SetTransport(registry, TransportId::kSmtp);
} catch (...) {
  return ReportFailure();
}

bool SetDiscussionEmailEnabled(bool enabled) try {
  const RegUtil registry = GetRegUtil(Hive::CurrentUser, RegistryPath::kTalvane, true);
  if (!registry) return false;
  if (!registry.SetCurrPath(RegistryPath::kOutbound)) {
    if (!registry.AddKey(RegistryPath::kOutboundKey)) {
      // Without the key's name; the value then goes to the version key.
      ShowResourceMessage(TextNumber::kKeyNotAdded, {});
    } else if (!registry.DropToSubKey(RegistryPath::kOutboundKey)) {
      ShowResourceMessageV(TextNumber::kPathRefused, {RegistryPath::kOutbound});
    }
  }
  SetRegStringValue(registry, SendingValue::kEnabled, enabled ? u"True" : u"False");
  return true;
} catch (...) {
  return false;
}

}  // namespace TvEmailServices
