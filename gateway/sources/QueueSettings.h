// QueueSettings: where the mail of a mailbox waits, and what happens to it after success.
#pragma once

#include <chrono>
#include <string>

namespace Gateway {

enum class QueueKind { Maildir, Imap, Pop3 };

// With Tls the connection is encrypted from its first byte (IMAP port 993, POP3 995), with StartTls before
// the logon (143, 110; RFC 2595). The server's certificate and its host name are checked in both. None sends
// the password as it is: for a server on the same machine.
enum class QueueSecurity { Tls, StartTls, None };

// What happens on the server to a mail that was delivered, known already, or held.
enum class AfterSuccess {
  Mark,    // IMAP: \Seen. POP3, which has no marks: the mail stays, and its unique id is stored in HOME/state
  Move,    // IMAP: to the folder MoveTo
  Delete,  // IMAP and POP3
};

// Paths are absolute and UTF-8.
struct QueueSettings {
  QueueKind Kind = QueueKind::Maildir;

  // A Maildir: the folder that holds new, cur and tmp. Mail that is settled moves from new to cur.
  std::string Folder;

  // IMAP and POP3.
  std::string Host;  // a name or an address, as the server's certificate names it
  int Port = 0;      // 0 for the usual one
  QueueSecurity Security = QueueSecurity::Tls;
  std::string User;
  std::string PasswordFile;  // its first line is the password; mode 0600 or 0400, owned by the user
  AfterSuccess After = AfterSuccess::Mark;
  std::string CaFile;  // PEM; empty for the certificate authorities that the system trusts

  // IMAP alone. Names are UTF-8, with the server's separator.
  std::string Mailbox = "INBOX";
  std::string MoveTo;

  // Times of the network.
  std::chrono::milliseconds ConnectTimeout = std::chrono::seconds(30);  // for each address of the host
  std::chrono::milliseconds ReadTimeout = std::chrono::seconds(60);     // without a byte from the server
  std::chrono::milliseconds IdleRestart = std::chrono::minutes(10);   // servers and NAT boxes drop older ones
  std::chrono::milliseconds PollInterval = std::chrono::seconds(60);  // where the server reports no new mail

  friend bool operator==(const QueueSettings&, const QueueSettings&) = default;
};

}  // namespace Gateway
