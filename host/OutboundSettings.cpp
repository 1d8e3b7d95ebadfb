#include "host/OutboundSettings.h"

#include <unistd.h>

#include "gateway/notices/ProjectSending.h"
#include "gateway/notices/SmtpHost.h"
#include "host/RegistryKey.h"
#include "platform/Failure.h"
#include "platform/NoticeTexts.h"
#include "platform/ReasonTexts.h"
#include "platform/StoredNames.h"
#include "runtime/MailAddress.h"
#include "runtime/Texts.h"

namespace Host {

bool OutboundSettings::Complete() const {
  if (!Configured || !Enabled) return false;
  if (Transport == TransportId::kMapi) return !Profile.empty();
  return Transport == TransportId::kSmtp && !HostName.empty() && !Address.empty();
}

// As the sender of notices checks them.
String OutboundSettings::Problem() const {
  if (Transport != TransportId::kSmtp) return {};
  if (!Gateway::ParseSmtpHost(HostName)) return Runtime::TextOf(TextNumber::kSmtpHostInvalid, HostName);
  const String fault = Runtime::AddressFault(Address);
  return fault.empty() ? String() : Runtime::TextOf(TextNumber::kAddressRefused, Address, fault);
}

void OutboundSettings::Check(const Gateway::NoticeSettings& servers) const {
  if (const String problem = Problem(); !problem.empty())
    throw Failure(FailureNumber::RefusedInput, u"OutboundSettings", problem);
  const auto transport = Transport == TransportId::kSmtp
                             ? Gateway::MakeSmtpTransport(HostName, servers.ServerOf(HostName))
                             : Gateway::MakeCommandTransport(Gateway::CommandOfProfile(Profile));
  transport->Check();
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
