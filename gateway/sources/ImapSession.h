// ImapSession: a logged on session with an IMAP server (RFC 3501), by libetpan over a Connection.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "gateway/sources/Interruption.h"
#include "gateway/sources/QueueSettings.h"

namespace Gateway {

// libetpan checks neither certificates nor host names, and neither sizes nor times, so all of that is the
// Connection's part. One thread. Every failure has number 57 and ends the use of the session.
class ImapSession {
 public:
  struct Mail {
    std::uint32_t Uid = 0;
    std::size_t Size = 0;  // as the server says
  };

  // Connects, encrypts and logs on. The password file is read now.
  ImapSession(const QueueSettings& settings, const Interruption& interruption);
  ~ImapSession();

  // Opens the settings' mailbox. With readOnly nothing can be changed; without, mails are removed that an
  // earlier session had handled, if it ended between the two steps of a removal.
  void Open(bool readOnly);

  // Raises the server's reason if there is no such mailbox.
  void RequireMailbox(const std::string& name);

  // The unique ids of the mails that are neither read nor deleted, ascending.
  std::vector<std::uint32_t> Unread();

  // The sizes of some of them, ascending by id; without the mails that are there no longer.
  std::vector<Mail> Sizes(const std::vector<std::uint32_t>& uids);

  // Reads a mail, or only its header, into bytes; doesn't mark it. Returns false if it is there no longer.
  bool Fetch(const Mail& mail, bool headerOnly, std::string& bytes);

  // Marks, moves or deletes a mail. Where the server can't remove one mail alone (RFC 4315), a moved or
  // deleted mail stays with the flag \Deleted.
  void Settle(std::uint32_t uid, AfterSuccess after);

  bool CanIdle() const;

  // Waits until the server reports a change (RFC 2177), or for the time. Returns after an interruption, too.
  void Idle(std::chrono::milliseconds longest);

 private:
  struct Parts;

  void LogOn();
  void RemoveHandled();

  std::unique_ptr<Parts> parts_;
};

}  // namespace Gateway
