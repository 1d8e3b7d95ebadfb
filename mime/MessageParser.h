// MessageParser: a message and its parts, parsed by GMime.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "mime/GMimeReference.h"

namespace Mime {

// One thread.
class ParsedMessage {
 public:
  // Parses a message of RFC 5322 with line ends of any kind. Malformed messages give what can be read of
  // them. Raises LimitExceeded and std::bad_alloc.
  explicit ParsedMessage(std::string bytes);
  ParsedMessage(const ParsedMessage&) = delete;
  ParsedMessage& operator=(const ParsedMessage&) = delete;
  ~ParsedMessage();

  // The tree of parts; null without one. Owned by this object.
  GMimeObject* Root() const;

  // The senders in the first From field, parsed by GMime; null without one. Owned by this object.
  InternetAddressList* From() const;

  // The raw, folded value of the first field of a name, from the bytes, since GMime's value ends at a zero
  // byte. Empty without such a field, and for Sender, Reply-To, To, Cc and Bcc, which are hidden from the
  // parser. Valid as long as this object.
  std::string_view Field(const char* name) const;

  // The names and the raw, folded values of all fields of the message's own header, in their order; those of
  // the content, whose names begin with Content-, after the others. Valid as long as this object.
  std::vector<std::pair<std::string_view, std::string_view>> Fields() const;

  // The content after the header of the whole message.
  std::string_view RawBody() const;

  // The bytes of a part, with transfer encoding. Valid as long as this object.
  std::string_view RawContent(GMimePart* part) const;

 private:
  std::string_view ValueOf(GMimeHeader* header) const;

  std::string bytes_;
  GByteArray* lent_;  // shares the bytes with the parser, which saves a copy of each attachment
  Owned<GMimeMessage> message_;
};

}  // namespace Mime
