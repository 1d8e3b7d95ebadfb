#include "src/outbound/OutboundStore.h"

#include "platform/Failure.h"
#include "src/mailbox/RegistryValues.h"
#include "src/services/modComponents.h"
#include "src/services/modMain.h"

namespace TvEmailServices {
namespace {

constexpr std::int32_t kCannotAddKey = 10013;
constexpr std::int32_t kCannotReachKey = 10015;
constexpr std::int32_t kCannotEnterPath = 10016;
constexpr std::int32_t kNoProfile = 10040;
constexpr std::int32_t kNoAddress = 10041;
constexpr std::int32_t kNoHostName = 10042;

bool SetTransport(const RegUtil& registry, std::int32_t transport) {
  return SetRegStringValue(registry, kTransportIdValue, Value(transport).ToString());
}

}  // namespace

String OutboundKeyPath() {
  return String(kTalvaneVersionKey).append(u"\\").append(kOutboundKeyName);
}

bool OpenOutboundKey(RegUtil& registry) try {
  registry = GetRegUtil(Hive::CurrentUser, String(kTalvaneVersionKey), true);
  if (!registry) {
    ShowResourceMessage(kCannotReachKey, {});
    return false;
  }
  if (registry.DropToSubKey(kOutboundKeyName)) return true;
  if (!registry.AddKey(kOutboundKeyName)) {
    ShowResourceMessageV(kCannotAddKey, {kOutboundKeyName});
    return false;
  }
  if (!registry.DropToSubKey(kOutboundKeyName)) {
    ShowResourceMessageV(kCannotEnterPath, {OutboundKeyPath()});
    return false;
  }
  return true;
} catch (...) {
  return ReportFailure();
}

bool SaveMapiOutbound(const String& profile) try {
  if (profile.empty()) {
    ShowResourceMessage(kNoProfile, {});
    return false;
  }
  RegUtil registry;
  return OpenOutboundKey(registry) && SetRegStringValue(registry, kMapiProfileValue, profile) &&
         SetTransport(registry, kMapiTransport);
} catch (...) {
  return ReportFailure();
}

bool SaveSmtpOutbound(const String& hostName, const String& emailAddress, const String& realName) try {
  if (hostName.empty()) {
    ShowResourceMessage(kNoHostName, {});
    return false;
  }
  if (emailAddress.empty()) {
    ShowResourceMessage(kNoAddress, {});
    return false;
  }
  RegUtil registry;
  return OpenOutboundKey(registry) && SetRegStringValue(registry, kSmtpHostNameValue, hostName) &&
         SetRegStringValue(registry, kEMailAddressValue, emailAddress) &&
         SetRegStringValue(registry, kRealNameValue, realName) && SetTransport(registry, kSmtpTransport);
} catch (...) {
  return ReportFailure();
}

bool SetDiscussionEmailEnabled(bool enabled) try {
  const RegUtil registry = GetRegUtil(Hive::CurrentUser, String(kTalvaneVersionKey), true);
  if (!registry) return false;
  if (!registry.SetCurrPath(OutboundKeyPath())) {
    if (!registry.AddKey(kOutboundKeyName)) {
      ShowResourceMessage(kCannotAddKey, {});  // names no key, and the value then goes to the version key
    } else if (!registry.DropToSubKey(kOutboundKeyName)) {
      ShowResourceMessageV(kCannotEnterPath, {OutboundKeyPath()});
    }
  }
  SetRegStringValue(registry, kDiscussionEmailEnabledValue, enabled ? u"True" : u"False");
  return true;
} catch (...) {
  return false;
}

}  // namespace TvEmailServices
