// MessageParser: a message and its parts, as GMime finds them in the bytes.
#pragma once

#include <string>
#include <string_view>

#include "mime/GMimeReference.h"

namespace Mime {

// One thread.
class ParsedMessage {
 public:
  // Reads a message of RFC 5322 with line ends of any kind. Malformed ones give what can be told from them.
  // Raises LimitExceeded and std::bad_alloc.
  explicit ParsedMessage(std::string bytes);
  ParsedMessage(const ParsedMessage&) = delete;
  ParsedMessage& operator=(const ParsedMessage&) = delete;
  ~ParsedMessage();

  // The tree of parts; null where there is none. Owned by this object.
  GMimeObject* Root() const;

  // The senders as GMime read the first From field; null without one. Owned by this object.
  InternetAddressList* From() const;

  // The raw value of the first field of a name, folded as it came. Taken from the bytes, since a zero byte
  // would end it otherwise. Empty without such a field, and for Sender, Reply-To, To, Cc and Bcc, which the
  // parser isn't shown. Valid as long as this object.
  std::string_view Field(const char* name) const;

  // What stands behind the header of the whole message.
  std::string_view RawBody() const;

  // The bytes of a part, transfer encoding and all. Valid as long as this object.
  std::string_view RawContent(GMimePart* part) const;

 private:
  std::string bytes_;
  GByteArray* lent_;  // lends the bytes to the parser, which keeps no copy of an attachment that way
  Owned<GMimeMessage> message_;
};

}  // namespace Mime
