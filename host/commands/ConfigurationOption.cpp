#include "host/commands/ConfigurationOption.h"

#include <CLI/CLI.hpp>
#include <filesystem>

#include "host/AbsolutePath.h"
#include "host/CommandError.h"
#include "host/Mailboxes.h"

namespace Host {

void ConfigurationOption::AddTo(CLI::App& command) {
  command.add_option("MAILBOX", Mailboxes, "Mailboxes of the configuration; all without a name");
  command.add_option("--config", File,
                     "The configuration, instead of tvmail.toml in the folder of the stores");
}

std::vector<String> ConfigurationOption::Names() const {
  std::vector<String> names;
  for (const std::string& name : Mailboxes) names.push_back(Trim(ArgumentText(name)));
  return names;
}

std::vector<String> ConfigurationOption::NamesOrAll(const Gateway::Configuration& configuration) const {
  std::vector<String> names = Names();
  if (!names.empty()) return names;
  for (const auto& mailbox : configuration.Mailboxes) names.push_back(mailbox.Name);
  for (const MailboxRecord& record : ReadMailboxes()) {
    if (!configuration.Find(record.Name)) names.push_back(record.Name);
  }
  return names;
}

std::string ConfigurationOption::Path() const {
  return File.empty() ? Gateway::ConfigurationPath() : ToUtf8(AbsolutePath(File));
}

Gateway::Configuration ConfigurationOption::Read() const {
  try {
    return Gateway::ReadConfiguration(Path());
  } catch (const Failure& failure) {
    throw CommandError(NotConfigured, failure.Description());
  }
}

Gateway::Configuration ConfigurationOption::ReadIfAny() const {
  std::error_code error;
  if (File.empty() && std::filesystem::status(Path(), error).type() == std::filesystem::file_type::not_found)
    return {Path(), {}, {}, {}, {}};
  return Read();
}

}  // namespace Host
