// OutboundSettings: how the mail of this system user's discussions is sent.
#pragma once

#include <cstdint>
#include <optional>

#include "gateway/notices/NoticeSettings.h"
#include "platform/contracts/ProjectAdministration.h"

namespace Host {

using namespace Platform;

struct OutboundSettings {
  bool Configured = false;
  bool Enabled = true;
  std::int32_t Transport = 0;  // a TransportId; 0 for none and for an unknown one
  String StoredTransport;
  String Profile, HostName, Address, RealName;

  // True if mail can be sent by them, and is to be.
  bool Complete() const;
  // What is wrong with complete settings, by which no mail would be sent: an SMTP host or an address that
  // isn't usable. In the user's language; empty if nothing is.
  String Problem() const;
  // Proves that complete settings send mail, and sends none: see MailTransport::Check. servers is for their
  // host. Raises what is wrong and what to do.
  void Check(const Gateway::NoticeSettings& servers) const;
  // For the notices of a reply; only if they are complete.
  NoticeRoute Route() const;
};

// As the component stores them. Raises 57 if the user's registry is missing or can't be read.
OutboundSettings ReadOutboundSettings();

}  // namespace Host
