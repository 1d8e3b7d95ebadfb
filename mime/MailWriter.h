// MailWriter: writes a text as a mail that every mail program reads (RFC 5322, RFC 2045, RFC 2047).
#pragma once

#include <ctime>
#include <string>
#include <utility>
#include <vector>

#include "platform/Text.h"

namespace Mime {

using Platform::String;

// A person or a program with an address. Both may be any text.
struct Correspondent {
  String Name = {};
  String Address = {};  // empty for nobody: no such field
};

struct TextMail {
  Correspondent From = {};
  Correspondent ReplyTo = {};
  Correspondent To = {};
  // In pieces, which are written one after the other. It is folded in front of a piece that begins with a
  // blank, and nowhere else. What can't be written as it is becomes encoded words, from one such piece to the
  // next: a piece is divided between two words only if it is too long for one, so that a reader who joins
  // words wrongly finds it whole.
  std::vector<String> Subject = {};
  std::time_t Date = 0;  // written in UTC
  // Message-IDs are without angle brackets. Those that aren't valid are omitted, and the field too if none is
  // left.
  std::string MessageId = {};
  std::string InReplyTo = {};
  std::vector<std::string> References = {};  // the first one first
  String ListName = {};
  std::string ListId = {};                                       // empty: no List-Id (RFC 2919)
  std::vector<std::pair<const char*, const char*>> Fields = {};  // further ones, in ASCII
  String Text = {};
  String Html = {};  // the same text; empty for plain text alone
};

// The bytes with LF as line ends. All of it is ASCII but for the local part of an address beyond ASCII, which
// is UTF-8 (RFC 6532). No line has more than 998 bytes, none of the text more than 76. Control characters in
// a field become blanks, so that no text can add a field. An address that isn't valid is quoted, in the
// domain "invalid". Texts are quoted-printable, or base64 if that is shorter. Lone surrogates become U+FFFD,
// and line ends of each kind LF. Any thread.
std::string WriteMail(const TextMail& mail);

}  // namespace Mime
