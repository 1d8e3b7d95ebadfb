// Pop3Session: a logged on session with a POP3 server (RFC 1939).
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "gateway/sources/Connection.h"

namespace Gateway {

// Written on the Connection alone: libetpan's reader of this protocol ends a line at a NUL, and so loses a
// part of the mail, and trusts the numbers in a server's list. One thread. Every failure has number 57 and
// ends the use of the session.
class Pop3Session {
 public:
  struct Mail {
    std::size_t Number = 0;  // in this session
    std::size_t Size = 0;    // as the server says
    std::string Id;          // unique in the mailbox, also in later sessions
  };

  // Connects, encrypts and logs on. The password file is read now.
  Pop3Session(const QueueSettings& settings, const Interruption& interruption);

  // In the server's order, which is usually that of arrival.
  std::vector<Mail> List();

  // Reads a mail, or only its header, into bytes. Returns false if the server refuses it, with the
  // Reason.
  bool Fetch(const Mail& mail, bool headerOnly, std::string& bytes);
  const std::string& Reason() const { return reason_; }

  // The mail is removed by Quit; without Quit it stays.
  void Delete(const Mail& mail);
  void Quit();

 private:
  void LogOn(const QueueSettings& settings);

  // Sends a command and reads the first line of its answer. Returns false for -ERR, with the server's reason.
  bool Ask(const std::string& command);

  // The same; raises a text with the reason for -ERR.
  void Require(const std::string& command, std::int32_t text);

  // Appends a line with its line end to the bytes.
  void ReadLine(std::string& bytes);

  // Appends the next line of a long answer; false at its end.
  bool ReadLineOfMany(std::string& bytes);

  Connection line_;
  std::string buffer_;
  std::size_t begin_ = 0;  // of the bytes in the buffer that weren't read
  std::string reason_;
  bool deleted_ = false;
};

}  // namespace Gateway
