// MailboxSection: reads a section [[mailbox]], or the section [defaults], of the configuration.
#pragma once

#include "gateway/service/Configuration.h"
#include "gateway/service/SettingsSection.h"

namespace Gateway {

// Settings of any mailbox; a mailbox's section begins with a copy.
struct DefaultSettings {
  DeliverySettings Delivery;
  NoticeSettings Notices;
  QueueSettings Source;
  std::optional<QueueKind> Kind;  // nothing if mailboxes have no source
};

DefaultSettings ReadDefaults(const SettingsNode& table, SettingsProblems& problems);

// The name is empty if it is missing or wrong.
MailboxSettings ReadMailbox(const SettingsNode& table, const DefaultSettings& defaults,
                            SettingsProblems& problems, SettingsProblems& warnings);

}  // namespace Gateway
