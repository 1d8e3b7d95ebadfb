// SendOptions: the options that say how a project's mail is sent.
#pragma once

#include <optional>
#include <string>

#include "host/SendingSession.h"

namespace CLI {
class App;
}

namespace Host {

struct SendOptions {
  std::optional<std::string> Transport;
  std::optional<std::string> HostName;
  std::optional<std::string> Address;
  std::optional<std::string> RealName;
  std::optional<std::string> Profile;

  // Adds --transport, --host, --address, --real-name and --profile to the command. This object must outlive
  // the parsing.
  void AddTo(CLI::App& command);

  // True if one was given.
  bool Any() const;
};

// The options that were given, and the present settings for the others. If neither gives a transport, the
// user at the terminal is asked. Raises a CommandError for a missing setting, for an option of the other
// transport, and for a setting with a control character.
SendSettings ResolveSendSettings(const SendOptions& options, const SendSettings& present);

}  // namespace Host
