// SmtpSection: reads a section [[smtp]] of the configuration.
#pragma once

#include "gateway/notices/MailTransport.h"
#include "gateway/service/SettingsSection.h"

namespace Gateway {

// The host is empty if it is missing or wrong.
SmtpServer ReadSmtpServer(const SettingsNode& table, SettingsProblems& problems, SettingsProblems& warnings);

}  // namespace Gateway
