// The key functions of the interfaces: each has one type information in the process.
#include "platform/Component.h"
#include "platform/Services.h"
#include "platform/contracts/MailHandler.h"
#include "platform/contracts/ProjectLibrary.h"

namespace Platform {

ProjectUser::~ProjectUser() = default;
ProjectUsers::~ProjectUsers() = default;
Project::~Project() = default;
ApplicationStatus::~ApplicationStatus() = default;
ApplicationLogon::~ApplicationLogon() = default;
TalvaneApplication::~TalvaneApplication() = default;
TalvaneApplicationFactory::~TalvaneApplicationFactory() = default;
MailHandler::~MailHandler() = default;
EMailManagerInterface::~EMailManagerInterface() = default;
ClassFactory::~ClassFactory() = default;
RandomSource::~RandomSource() = default;
PlatformServices::~PlatformServices() = default;

}  // namespace Platform
