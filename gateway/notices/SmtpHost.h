// SmtpHost: the server in a setting for sending mail, such as "mail.example.org:587".
#pragma once

#include <optional>
#include <string>

#include "platform/Text.h"

namespace Gateway {

struct SmtpHost {
  std::string Name;  // lower case ASCII: a name, as DNS has it, or an address without brackets
  int Port = 0;      // 0 if none is given

  bool IsIpv6() const { return Name.find(':') != std::string::npos; }

  // "localhost", 127.0.0.0/8 and ::1. The library for sending never asks DNS for that name.
  bool IsThisMachine() const;
};

// Reads "HOST", "HOST:PORT", "[ADDRESS]:PORT", or an address of IPv4 or IPv6. A name may be in any script
// (RFC 5891). Blanks at both ends are ignored. Returns nothing for another text. Any thread.
std::optional<SmtpHost> ParseSmtpHost(Platform::StringView text);

}  // namespace Gateway
