// MailTransport: takes mails to a mail server, or to a command that does so.
#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>

#include "platform/Text.h"

namespace Gateway {

using Platform::String;
using Platform::StringView;

// A mail with its envelope (RFC 5321).
struct OutgoingMail {
  std::string Sender;     // the return path; empty for the null return path
  std::string Recipient;  // one address, UTF-8
  std::string Bytes;      // LF as line ends
};

struct SendResult {
  enum class Kind {
    Sent,
    Deferred,     // this mail failed for now
    Refused,      // this mail failed for good
    Unreachable,  // the server or the command failed for now, so others would fail too
  };
  Kind Result = Kind::Sent;
  String Reason;  // what happened and what to do, in the user's language; empty if Sent
};

// No Send takes longer, but for some seconds to end it.
inline constexpr std::chrono::minutes kLongestSend{15};

// One thread, except for Interrupt.
class MailTransport {
 public:
  virtual ~MailTransport() = default;

  // Raises nothing but std::bad_alloc. After Sent the server is responsible for the mail.
  virtual SendResult Send(const OutgoingMail& mail) = 0;

  // Proves that mail can be sent, and sends none: connects, checks the certificate and logs on, or finds the
  // command. Raises 57 with what is wrong and what to do.
  virtual void Check() = 0;

  // Ends a Send under way within 0.2 s, as Unreachable, and makes each later one end so. Any thread.
  virtual void Interrupt() = 0;
};

enum class SmtpSecurity { Auto, Tls, StartTls, None };

// A section [[smtp]] of the configuration: how to talk to a server. A server without a section has these
// defaults.
struct SmtpServer {
  std::string Host;  // as the settings for sending name it, without the port
  int Port = 0;      // 0: any port
  // Auto: TLS from the start on port 465, otherwise STARTTLS where the server offers it. The certificate is
  // checked, except on this machine (localhost, 127.0.0.0/8, ::1) without a CaFile.
  SmtpSecurity Security = SmtpSecurity::Auto;
  std::string User;  // empty: no logon. With one, TLS is required except on this machine.
  std::string PasswordFile;
  std::string CaFile;  // PEM; empty: the system's authorities

  friend bool operator==(const SmtpServer&, const SmtpServer&) = default;
};

// host is "mail.example.org", "mail.example.org:2525", "[::1]:25" or an address; without a port it is 25, or
// the one of the server's section, or 465 with SmtpSecurity::Tls. Raises 380 for a host that isn't usable.
std::unique_ptr<MailTransport> MakeSmtpTransport(StringView host, const SmtpServer& server);

// A sendmail-compatible command that takes the mail on standard input and the recipient from its To field,
// such as "msmtp -a office -t". It is run by /bin/sh as this user; empty for "sendmail -t -i".
std::unique_ptr<MailTransport> MakeCommandTransport(StringView command);

}  // namespace Gateway
