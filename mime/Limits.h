// Limits: the size and the content up to which a mail is read.
//
// The parser needs up to 1.3 kB for a part, 0.9 kB for a header field and 0.2 kB for a parameter, however
// short they are; it parses nested address groups recursively, and some malformed fields in quadratic time.
// Each limit is far above what mail programs write. Together they keep the memory for a mail below 8 times
// its size plus 64 MB, and the time linear in its size.
#pragma once

#include <cstddef>

namespace Mime {

// In bytes. Only one mail at a time is in memory.
inline constexpr std::size_t kLargestMail = std::size_t{128} << 20;

struct MailLimits {
  // Nested multiparts and messages. Postfix also allows 100.
  std::size_t Depth = 100;

  // Leaves, multiparts and attached messages of the whole mail. A digest of a busy mailing list has some
  // hundreds.
  std::size_t Parts = 5000;

  // Fields of one header. A mail that passed twenty servers has about a hundred.
  std::size_t HeaderFields = 1000;

  // Fields of all headers, including attached messages: 300 forwarded mails of 100 fields each.
  std::size_t Fields = 30000;

  // In bytes, including the field's name and folds: the recipients of a mail to 5,000 people. Postfix cuts a
  // field at 100 kB.
  std::size_t FieldSize = std::size_t{256} << 10;

  // In bytes, all fields of one header. Exim has the same limit.
  std::size_t HeaderSize = std::size_t{1} << 20;

  // In bytes, a Content-Type or Content-Disposition. A file name of 255 Japanese characters takes 3 kB in RFC
  // 2231's encoding.
  std::size_t ContentFieldSize = std::size_t{8} << 10;

  // Parameters of one such field, and of all. RFC 2231 splits a long name into about twenty.
  std::size_t FieldParameters = 200;
  std::size_t Parameters = 10000;

  // Opening parentheses in such a field. Comments are unusual there, but file names may contain some.
  std::size_t ContentFieldComments = 50;

  // Encoded words in such a field: a file name of 255 Japanese characters takes 14.
  std::size_t ContentFieldWords = 25;

  // In bytes, a mail's own Subject. The longest that mail programs write is about 1 kB.
  std::size_t SubjectSize = std::size_t{16} << 10;

  // In bytes, a Content-Transfer-Encoding or a mail's own Message-ID: a line of RFC 5322. A longer field is
  // ignored.
  std::size_t ShortFieldSize = 998;

  // A mail's own From: RFC 5322 allows one field, and nearly all name one address.
  std::size_t FromFields = 4;
  std::size_t FromSize = std::size_t{8} << 10;

  // Nested groups, which RFC 5322 doesn't allow, and nested comments in a mail's own From. Programs that
  // write "mailto:" in front of each address seem to nest groups.
  std::size_t AddressDepth = 100;
};

}  // namespace Mime
