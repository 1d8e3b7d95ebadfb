// NoticeSettings: what the administrator has set for the mail that a mailbox sends.
#pragma once

#include <vector>

#include "gateway/notices/MailTransport.h"

namespace Gateway {

struct NoticeSettings {
  bool Send = true;           // tell users of new replies
  bool AnswerSenders = true;  // tell the sender of a refused mail the reason
  int PerMinute = 100;        // the most mails in a minute
  String Address;             // of the mailbox; empty for the one in the project's file
  std::vector<SmtpServer> Servers;

  // The settings of a server "HOST" or "HOST:PORT"; the defaults if the file has none. A section with the
  // port comes before one without.
  SmtpServer ServerOf(StringView host) const;

  friend bool operator==(const NoticeSettings&, const NoticeSettings&) = default;
};

}  // namespace Gateway
