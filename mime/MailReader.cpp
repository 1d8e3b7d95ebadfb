#include <gmime/gmime.h>

#include <algorithm>
#include <memory>
#include <string_view>

#include "mime/Charset.h"
#include "mime/HeaderText.h"
#include "mime/Mail.h"
#include "mime/MailBody.h"

namespace Mime {
namespace {

struct Unreference {
  void operator()(void* object) const { g_object_unref(object); }
};
template <class Type>
using Owned = std::unique_ptr<Type, Unreference>;

// A mail whose lines end in a bare CR or in CR CR LF gets line feeds; all others are read as they are.
void MendLineEnds(std::string& bytes) {
  const std::size_t first = bytes.find_first_of("\r\n");
  if (first == std::string::npos || bytes[first] == '\n' || bytes.compare(first, 2, "\r\n") == 0) return;
  const bool doubled = bytes.compare(first, 3, "\r\r\n") == 0;
  if (!doubled) {
    std::replace(bytes.begin(), bytes.end(), '\r', '\n');
    return;
  }
  std::size_t kept = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (bytes[i] != '\r') bytes[kept++] = bytes[i];
  }
  bytes.resize(kept);
}

// The raw value of the first field of a name, folded as it came. Read from the mail's own bytes, since a zero
// byte would end it otherwise.
std::string_view RawField(GMimeMessage* message, const char* name, std::string_view bytes) {
  GMimeHeader* header =
      g_mime_header_list_get_header(g_mime_object_get_header_list(GMIME_OBJECT(message)), name);
  if (!header) return {};
  const gint64 offset = g_mime_header_get_offset(header);
  if (offset < 0 || static_cast<std::size_t>(offset) >= bytes.size()) return {};
  const std::string_view field = bytes.substr(static_cast<std::size_t>(offset));
  std::size_t end = field.find('\n');
  while (end != std::string_view::npos && end + 1 < field.size() &&
         (field[end + 1] == ' ' || field[end + 1] == '\t'))
    end = field.find('\n', end + 1);
  const std::size_t colon = field.find(':');
  if (colon == std::string_view::npos || colon > end) return {};
  return field.substr(colon + 1, end == std::string_view::npos ? end : end - colon - 1);
}

// The first mailbox of an address list, groups included.
const char* FirstAddress(InternetAddressList* list) {
  const int count = list ? internet_address_list_length(list) : 0;
  for (int i = 0; i < count; ++i) {
    InternetAddress* address = internet_address_list_get_address(list, i);
    const char* found =
        INTERNET_ADDRESS_IS_MAILBOX(address)
            ? internet_address_mailbox_get_addr(INTERNET_ADDRESS_MAILBOX(address))
            : FirstAddress(internet_address_group_get_members(INTERNET_ADDRESS_GROUP(address)));
    if (found && *found) return found;
  }
  return nullptr;
}

// OpenPGP's multipart/encrypted (RFC 3156) and the enveloped data of S/MIME (RFC 8551).
bool IsEncrypted(GMimeMessage* message) {
  GMimeObject* root = g_mime_message_get_mime_part(message);
  GMimeContentType* type = root ? g_mime_object_get_content_type(root) : nullptr;
  if (!type) return false;
  if (g_mime_content_type_is_type(type, "multipart", "encrypted")) return true;
  const char* kind = g_mime_content_type_get_parameter(type, "smime-type");
  return (g_mime_content_type_is_type(type, "application", "pkcs7-mime") ||
          g_mime_content_type_is_type(type, "application", "x-pkcs7-mime")) &&
         (!kind || std::string_view(kind).find("enveloped") != std::string_view::npos);
}

Owned<GMimeMessage> Parse(GByteArray* bytes) {
  const Owned<GMimeStream> stream(g_mime_stream_mem_new_with_byte_array(bytes));
  g_mime_stream_mem_set_owner(GMIME_STREAM_MEM(stream.get()), FALSE);
  const Owned<GMimeParser> parser(g_mime_parser_new_with_stream(stream.get()));
  g_mime_parser_set_persist_stream(parser.get(), TRUE);
  return Owned<GMimeMessage>(g_mime_parser_construct_message(parser.get(), nullptr));
}

}  // namespace

Mail ReadMail(std::string bytes) {
  static const bool started = (g_mime_init(), true);
  static_cast<void>(started);
  MendLineEnds(bytes);

  Mail mail;
  // The array lends the string's bytes to the parser, which keeps no copy of an attachment that way.
  GByteArray* lent = g_byte_array_new_take(reinterpret_cast<guint8*>(bytes.data()), bytes.size());
  {
    const Owned<GMimeMessage> message = Parse(lent);
    if (message) {
      if (const char* address = FirstAddress(g_mime_message_get_from(message.get())))
        mail.FromAddress = GuessText(address);
      mail.MessageId = DecodeHeader(RawField(message.get(), "Message-ID", bytes));
      mail.Subject = DecodeHeader(RawField(message.get(), "Subject", bytes));
      mail.Body = BodyOf(message.get());
      mail.Encrypted = IsEncrypted(message.get());
    }
  }
  g_byte_array_free(lent, FALSE);
  return mail;
}

}  // namespace Mime
