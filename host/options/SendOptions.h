// SendOptions: how a project's mail is sent, as options tell it.
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

  // Adds --transport, --host, --address, --real-name and --profile, to be read into this.
  void AddTo(CLI::App& command);

  // True if one was given.
  bool Any() const;
};

// What was given, and the present settings for what wasn't. Where neither names a transport the person at the
// terminal is asked. Raises a CommandError for what is missing still, for an option that belongs to the other
// transport, and for a setting with a control character.
SendSettings ResolveSendSettings(const SendOptions& options, const SendSettings& present);

}  // namespace Host
