// ProjectEmailSettings: the e-mail section of a project file, which tells how the project's mail is sent.
#pragma once

#include <optional>

#include "platform/contracts/GeneralServices.h"

namespace TvEmailServices {

using namespace Platform;

// What the section holds. A transport goes by its name towards the host and by its number in the file.
struct ProjectEmailSettings {
  std::int32_t TransportNumber = 0;
  String TransportName;
  String MAPIProfile;
  String RealName;
  String EMailAddress;
  Value HostName;  // as the project file gave it
};

// True if the section holds valid settings: transport 1 with a profile, or 2 with an address and a host. Out
// values are filled as far as they were read. A raised failure is shown with message 10051 if report is on.
bool ReadProjectEmailSettings(const String& projectPath, ProjectEmailSettings& settings, bool report);

// Tests everything, then writes the keys of the transport and saves. A refusal shows message 10019 with its
// reason (10048, 10018, 10021, 10020 or 10022) and writes nothing; a raised failure is shown as it is.
bool WriteProjectEmailSettings(const String& projectPath, const String& transportName,
                               const String& mapiProfile, const String& hostName, const String& eMailAddress,
                               const String& realName);

// True when the project of the mailbox holds no section any more. False also where the mailbox names no
// project, or its file can't be had. A raised failure is shown with 10058 if report is on. Where onlyFrom is
// given, the section of any other project is spared, which counts as done.
bool DeleteProjectEmailSettings(const String& mailBoxName, bool report,
                                const std::optional<String>& onlyFrom = {});

// False only if the project file could be read and holds no section. Silent.
bool MayHoldEmailSettings(const String& projectPath);

// The project file, or nothing. The second gives nothing for an empty path without asking, and shows a raised
// failure with message 10048.
ProjectFile GetProjectFile(const String& projectPath, bool report);
ProjectFile GetNamedProjectFile(const String& projectPath, bool report);

}  // namespace TvEmailServices
