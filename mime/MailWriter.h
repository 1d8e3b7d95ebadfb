// MailWriter: writes plain text as a mail that every mail program reads (RFC 5322, RFC 2045, RFC 2047).
#pragma once

#include <ctime>
#include <string>

#include "platform/Text.h"

namespace Mime {

using Platform::String;

struct TextMail {
  String FromName;
  String FromAddress;
  String Subject;
  std::time_t Date = 0;   // written in UTC
  std::string MessageId;  // without angle brackets, as the next one
  std::string InReplyTo;  // also the only one of References; empty for the first mail of a thread
  String Text;
};

// The bytes with LF as line ends. All of it is ASCII but for an address beyond ASCII, which is UTF-8
// (RFC 6532). The text is quoted-printable, or base64 if that is shorter. Lone surrogates become U+FFFD, and
// line ends in the fields become blanks, so that no text can add a field. Any thread.
std::string WriteMail(const TextMail& mail);

}  // namespace Mime
