// SmtpTransport: sends mails to an SMTP server (RFC 5321), over one connection for as long as the server
// keeps it.
#pragma once

#include <chrono>

#include "gateway/notices/MailTransport.h"

namespace Gateway {

struct SmtpTimes {
  std::chrono::milliseconds Connect = std::chrono::seconds(30);  // until the server has taken the logon
  std::chrono::seconds Silence = std::chrono::minutes(5);        // without any progress
  std::chrono::milliseconds Longest = kLongestSend;              // for one mail
};

class SmtpTransport final : public MailTransport {
 public:
  // As MakeSmtpTransport. The server isn't contacted yet.
  SmtpTransport(StringView host, SmtpServer server, SmtpTimes times = {});

  // Doesn't wait for the server.
  ~SmtpTransport() override;

  SendResult Send(const OutgoingMail& mail) override;
  void Check() override;
  void Interrupt() override;

 private:
  class Session;
  std::unique_ptr<Session> session_;
};

}  // namespace Gateway
