// ProjectSending: how a project's file says that its mail is sent.
#pragma once

#include <cstdint>

#include "platform/Text.h"

namespace Gateway {

using Platform::String;
using Platform::StringView;

struct ProjectSending {
  String ProjectName;
  std::int32_t Transport = 0;  // a Platform::TransportId; 0 without the section, and for an unknown transport
  String MapiProfile;
  String HostName;
  String Address;
  String RealName;
};

// Why nobody could answer: the project's address is missing or no address, and what to do; empty if it is
// one.
String AddressProblem(const ProjectSending& sending);

// What is missing in the settings to send mail, and what to do; empty if nothing is. In the user's language.
String SendingProblem(const ProjectSending& sending);

// The same of the server or the profile alone, without the address.
String RouteProblem(const ProjectSending& sending);

// Reads the file's section [EMail]. Raises as Platform::Files::RetrieveTVSFile does, and 429 without the
// sibling. Any thread.
ProjectSending ReadProjectSending(const String& projectPath);

// The number of a stored transport, converted as the component does it (" 2 " and "2.0" are SMTP, too); 0 for
// any other text. Pure.
std::int32_t TransportNumber(StringView stored);

// Reads the settings of a mailbox: an address that is set for it (NoticeSettings::Address) comes before the
// one in the file. Raises as above.
ProjectSending ReadMailboxSending(const String& projectPath, StringView mailboxAddress);

// What sends the mail of a profile without a command.
inline constexpr StringView kUsualCommand = u"sendmail -t -i";

// The command that a MAPI profile of this system user names; empty if it names none, or if the user has no
// such profile. Raises 57 if the user's registry can't be read. Any thread.
String CommandOfProfile(StringView profile);

// The profile's key in the user's registry.
String ProfileKey(StringView profile);

}  // namespace Gateway
