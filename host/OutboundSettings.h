// OutboundSettings: how the mail of this system user's discussions is sent.
#pragma once

#include <cstdint>
#include <optional>

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
  // For the notices of a reply; only if they are complete.
  NoticeRoute Route() const;
};

// As the component stores them. Raises 57 if the user's registry is missing or can't be read.
OutboundSettings ReadOutboundSettings();

}  // namespace Host
