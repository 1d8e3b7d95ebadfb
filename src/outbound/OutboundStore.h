// OutboundStore: saves a user's settings for outbound e-mail in the registry.
//
// They are string values of RegistryPath::kOutbound in the user's hive. The key is created on demand; its
// parent, the version key, must exist. This component doesn't send mail itself. A save writes only the values
// of its transport, and TransportID last, so that the former transport stays selected if the save fails;
// nothing is undone. No function raises a failure. Called on the thread of the user's forms.
#pragma once

#include "platform/contracts/GeneralServices.h"

namespace TvEmailServices {

using namespace Platform;

// Sets registry to a cursor at the outbound key. False after a message: kKeyNotReached without the version
// key, kKeyNotAdded or kPathRefused if the key can't be created or entered, or the raised failure.
bool OpenOutboundKey(RegUtil& registry);

// Selects MAPI. An empty profile is refused with kNoProfile, and nothing is written.
bool SaveMapiOutbound(const String& profile);

// Selects SMTP. An empty host is refused with kNoHostName, an empty address with kNoAddress, and nothing is
// written; the real name may be empty. All three are stored as given.
bool SaveSmtpOutbound(const String& hostName, const String& emailAddress, const String& realName);

// Stores whether discussions send mail. False without the version key, and, without a message, after a raised
// failure. Otherwise true: if the outbound key can't be created or entered, kKeyNotAdded or kPathRefused is
// shown and the value goes to the version key; the result of the write is ignored.
bool SetDiscussionEmailEnabled(bool enabled);

}  // namespace TvEmailServices
