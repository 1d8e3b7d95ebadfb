// Configuration: what the administrator has set for each mailbox, in the file tvmail.toml.
//
// docs/formats.md describes the file; packaging/tvmail.toml is an example with all settings.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "gateway/delivery/MailProcessor.h"
#include "gateway/notices/NoticeSettings.h"
#include "gateway/sources/QueueSettings.h"

namespace Gateway {

using Platform::StringView;

struct MailboxSettings {
  String Name;                          // as in the file; the mailbox's record may spell it in another case
  std::optional<QueueSettings> Source;  // nothing if a mail server passes the mails to tvmail deliver
  DeliverySettings Delivery;            // Hold is false
  NoticeSettings Notices;
  friend bool operator==(const MailboxSettings&, const MailboxSettings&) = default;
};

struct Configuration {
  std::string Path;
  DeliverySettings Defaults;      // of a mailbox that the file doesn't name
  NoticeSettings DefaultNotices;  // with the servers, no two for one host and port
  std::vector<MailboxSettings> Mailboxes;

  // What is wrong beside the file, and may be right soon: a file of a password that can't be read. One line
  // for each, with its place.
  std::vector<std::string> Warnings;

  // In any case; null if the file doesn't name it.
  const MailboxSettings* Find(StringView mailbox) const;

  // What a mailbox sends; the defaults if the file doesn't name it.
  const NoticeSettings& NoticesOf(StringView mailbox) const;
};

// The file tvmail.toml in the folder of the stores.
std::string ConfigurationPath();

// Reads the file. Raises 76 if it doesn't exist, 70 and 57 if it can't be read or if others than its owner
// may write it, and 380 for a file that isn't valid: the description then has a line for each error, with its
// place. Any thread.
Configuration ReadConfiguration(const std::string& path);

// How the mails of a mailbox are delivered, by its section of the file in the folder of the stores; by the
// section of defaults if it has none; by the program's defaults if there is no file. Raises as
// ReadConfiguration.
DeliverySettings SettingsOf(StringView mailbox);

}  // namespace Gateway
