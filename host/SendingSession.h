// SendingSession: the session object that the host passes to the component: how the project's mail is sent.
#pragma once

#include "platform/Object.h"

namespace Host {

using namespace Platform;

// Transport is the transport's name as in the component's texts.
struct SendSettings {
  String Transport;
  String MapiProfile;
  String HostName;
  String Address;
  String RealName;
};

// The names of the transports, from the same texts that the component uses. Raises 429 without the sibling
// TvResourceServices.
String MapiTransportName();
String SmtpTransportName();

// An object with SendLogon (Transport, HostName), MAPIProfile and User (Address, RealName).
ObjectRef MakeSession(const SendSettings& settings);

// The settings in a project file; an empty Transport if they are absent or invalid. Raises the failures of
// Files::RetrieveTVSFile.
SendSettings ReadSendSettings(const String& projectPath);

}  // namespace Host
