// OutboundStore: where a user's outbound e-mail settings lie, and how they are saved.
//
// They belong to the user, not to a project or a mailbox: string values of RegistryPath::kOutbound in the
// user's hive, whose key is created on demand; the key above it has to exist.
// Nothing in this component sends mail by them. A save touches only the values of its own transport and
// writes TransportID last, so that one that stops half way leaves the former transport in force; nothing is
// undone. Called on the thread whose user is to see the messages.
#pragma once

#include "platform/contracts/GeneralServices.h"

namespace TvEmailServices {

using namespace Platform;

// Puts registry onto the outbound key, which is created if need be. False after a message: 10015 without the
// version key, 10013 or 10016 where the key can't be made or entered; a raised failure is shown as it is.
bool OpenOutboundKey(RegUtil& registry);

// Makes MAPI the transport. An empty profile is refused with 10040, and nothing is written.
bool SaveMapiOutbound(const String& profile);

// Makes SMTP the transport. An empty host is refused with 10042, an empty address with 10041, and nothing is
// written; the real name may be empty. All three are stored as given.
bool SaveSmtpOutbound(const String& hostName, const String& emailAddress, const String& realName);

// Says whether discussions send mail. False without the version key, and, without a report, after a raised
// failure. Otherwise true: a key that can't be made or entered is told by 10013 or 10016, the value goes to
// where the registry stands then, and whether it was taken isn't looked at.
bool SetDiscussionEmailEnabled(bool enabled);

}  // namespace TvEmailServices
