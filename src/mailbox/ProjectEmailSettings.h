// ProjectEmailSettings: the e-mail section of a project file, with the settings for sending the project's
// mail.
//
// No function raises a failure. Called on the thread of the user's forms.
#pragma once

#include <optional>

#include "platform/contracts/GeneralServices.h"

namespace TvEmailServices {

using namespace Platform;

// The settings. The host knows a transport by its name, the file by its number.
struct ProjectEmailSettings {
  std::int32_t TransportNumber = 0;
  String TransportName;
  String MAPIProfile;
  String RealName;
  String EMailAddress;
  Value HostName;  // the string of the project file, or no value
};

// True if the section holds valid settings: MAPI with a profile, or SMTP with an address and a host. On false
// the settings read until then are set. A raised failure is shown with kSettingsUnreadable if report is true.
bool ReadProjectEmailSettings(const String& projectPath, ProjectEmailSettings& settings, bool report);

// Checks the settings, then writes the keys of the transport and saves the file. Invalid ones are refused
// with kSettingsRefused and the reason, and nothing is written; a raised failure is shown.
bool WriteProjectEmailSettings(const String& projectPath, const String& transportName,
                               const String& mapiProfile, const String& hostName, const String& eMailAddress,
                               const String& realName);

// Deletes the section from the mailbox's project. True also if there was none. False if the mailbox has no
// project path, or the file can't be read or written; a raised failure is shown with kSectionNotRemoved if
// report is true. If onlyFrom is given, a section of any other project is kept, and the result is true.
bool DeleteProjectEmailSettings(const String& mailBoxName, bool report,
                                const std::optional<String>& onlyFrom = {});

// False only if the project file can be read and has no section. Shows no message.
bool MayHoldEmailSettings(const String& projectPath);

// The project file; empty if it can't be read, with a message if report is true. GetNamedProjectFile gives an
// empty one for an empty path, without a message.
ProjectFile GetProjectFile(const String& projectPath, bool report);
ProjectFile GetNamedProjectFile(const String& projectPath, bool report);

}  // namespace TvEmailServices
