// MailWriter: writes a text as a mail that every mail program reads (RFC 5322, RFC 2045, RFC 2047).
#pragma once

#include <ctime>
#include <string>
#include <utility>
#include <vector>

#include "mime/HeaderWriter.h"

namespace Mime {

struct TextMail {
  Correspondent From = {};
  Correspondent ReplyTo = {};  // without an address: no such field, as for To
  Correspondent To = {};
  std::vector<String> Subject = {};  // in pieces, see HeaderWriter::AddText
  std::time_t Date = 0;
  // Message-IDs are without angle brackets.
  std::string MessageId = {};
  std::string InReplyTo = {};                // empty: no such field
  std::vector<std::string> References = {};  // the first one first
  String ListName = {};
  std::string ListId = {};                                       // empty: no List-Id
  std::vector<std::pair<std::string, std::string>> Fields = {};  // further ones, in ASCII
  String Text = {};
  String Html = {};  // the same text; empty for plain text alone
};

// The bytes with LF as line ends. All of it is ASCII but for an address beyond ASCII; HeaderWriter.h says
// what becomes of names, addresses and identifiers. Texts are quoted-printable, or base64 if that is shorter.
// Lone surrogates become U+FFFD, and line ends of each kind LF. Any thread.
std::string WriteMail(const TextMail& mail);

}  // namespace Mime
