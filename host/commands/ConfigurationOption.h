// ConfigurationOption: --config and the names of mailboxes, for the commands that use tvmail.toml.
#pragma once

#include <string>
#include <vector>

#include "gateway/service/Configuration.h"

namespace CLI {
class App;
}

namespace Host {

using namespace Platform;

struct ConfigurationOption {
  std::vector<std::string> Mailboxes;
  std::string File;  // empty for the usual one

  // Adds the option and the argument to a command.
  void AddTo(CLI::App& command);

  // The names without blanks around them. Raises a CommandError for one that isn't usable.
  std::vector<String> Names() const;

  // The names that were given; without one, all mailboxes of the configuration and of this machine. Raises as
  // Names and ReadMailboxes.
  std::vector<String> NamesOrAll(const Gateway::Configuration& configuration) const;

  std::string Path() const;

  // The configuration. Raises a CommandError with the code for a set-up that is missing or wrong.
  Gateway::Configuration Read() const;

  // The same; an empty configuration if the usual file doesn't exist, for sites whose mail server calls
  // tvmail deliver.
  Gateway::Configuration ReadIfAny() const;
};

}  // namespace Host
