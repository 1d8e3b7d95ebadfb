// SendingSession: the session object that the host hands to the component, which tells how the project's mail
// is sent.
#pragma once

#include "platform/Object.h"

namespace Host {

using namespace Platform;

// By which transport, and with what it needs. Transport is its name as the component's texts have it.
struct SendSettings {
  String Transport;
  String MapiProfile;
  String HostName;
  String Address;
  String RealName;
};

// The name of each transport, asked of the same texts from which the component takes it. Raises 429 without
// the sibling that gives texts.
String MapiTransportName();
String SmtpTransportName();

// The number of a stored transport, read as the component reads it (" 2 " and "2.0" are SMTP as well): 1 for
// MAPI, 2 for SMTP, 0 for any other text.
std::int32_t TransportNumber(StringView stored);

// An object with SendLogon (Transport, HostName), MAPIProfile and User (Address, RealName).
ObjectRef MakeSession(const SendSettings& settings);

// What a project's file says at present; no transport where it says nothing valid. Raises what the project
// file's reader raises.
SendSettings ReadSendSettings(const String& projectPath);

}  // namespace Host
