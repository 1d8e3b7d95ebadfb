// CommandTransport: sends mails by a sendmail-compatible command.
#pragma once

#include <chrono>

#include "gateway/notices/MailTransport.h"
#include "gateway/sources/Interruption.h"

namespace Gateway {

class CommandTransport final : public MailTransport {
 public:
  // As MakeCommandTransport.
  explicit CommandTransport(StringView command, std::chrono::milliseconds longest = std::chrono::minutes(5));

  // Sent for exit code 0; Refused for those that mean a wrong mail or recipient (EX_DATAERR, EX_NOUSER,
  // EX_NOHOST of sysexits.h); Unreachable for those of a wrong command or its settings, and if it takes too
  // long; Deferred for the others. The mail has to name the recipient alone: the command sends to everyone in
  // its fields.
  SendResult Send(const OutgoingMail& mail) override;

  // Finds the program that is the command's first word, and proves that a shell can read the command.
  void Check() override;
  void Interrupt() override;

 private:
  SendResult Run(const OutgoingMail& mail) const;

  std::string command_;
  std::chrono::milliseconds longest_;
  Interruption interruption_;
};

}  // namespace Gateway
