#include "mime/MailWriter.h"

#include <algorithm>

#include "mime/Base64.h"
#include "mime/GMimeReference.h"

namespace Mime {
namespace {

std::string WellFormedUtf8(const String& text) {
  String whole = text;
  for (std::size_t i = 0; i < whole.size(); ++i) {
    if (Platform::IsSurrogatePair(whole, i)) {
      ++i;
    } else if (Platform::IsSurrogate(whole[i])) {
      whole[i] = u'\uFFFD';
    }
  }
  return Platform::ToUtf8(whole);
}

// The text as encoded words of RFC 2047, which GMime writes unchanged: for a text that looks like one itself.
// Each holds whole characters.
std::string EncodedWords(std::string_view utf8) {
  constexpr std::size_t kMostBytes = 45;  // so that a word has at most 75 characters
  std::string words;
  while (!utf8.empty()) {
    std::size_t size = std::min(kMostBytes, utf8.size());
    while (size < utf8.size() && (utf8[size] & 0xC0) == 0x80) --size;
    if (!words.empty()) words += ' ';
    words += "=?UTF-8?B?" + EncodeBase64(utf8.substr(0, size)) + "?=";
    utf8.remove_prefix(size);
  }
  return words;
}

std::string FieldText(const String& text) {
  String line = text;
  std::ranges::replace_if(line, Platform::IsControl, u' ');
  const std::string bytes = WellFormedUtf8(line);
  return bytes.find("=?") == std::string::npos ? bytes : EncodedWords(bytes);
}

// Quoted-printable takes three bytes for each byte beyond ASCII, base64 four for any three.
GMimeContentEncoding EncodingOf(const std::string& text) {
  const auto beyondAscii = std::ranges::count_if(text, [](char c) { return (c & 0x80) != 0; });
  return static_cast<std::size_t>(beyondAscii) * 6 > text.size() ? GMIME_CONTENT_ENCODING_BASE64
                                                                 : GMIME_CONTENT_ENCODING_QUOTEDPRINTABLE;
}

Owned<GMimeTextPart> TextPart(std::string text) {
  std::erase(text, '\r');
  text += '\n';
  Owned<GMimeTextPart> part(g_mime_text_part_new_with_subtype("plain"));
  GMimeObject* const object = GMIME_OBJECT(part.get());
  g_mime_object_set_content_type_parameter(object, "charset", "UTF-8");
  const Owned<GMimeStream> stream(g_mime_stream_mem_new_with_buffer(text.data(), text.size()));
  const Owned<GMimeDataWrapper> content(
      g_mime_data_wrapper_new_with_stream(stream.get(), GMIME_CONTENT_ENCODING_DEFAULT));
  g_mime_part_set_content(GMIME_PART(part.get()), content.get());
  g_mime_part_set_content_encoding(GMIME_PART(part.get()), EncodingOf(text));
  return part;
}

std::string BytesOf(GMimeMessage* message) {
  GMimeFormatOptions* const format = g_mime_format_options_new();
  g_mime_format_options_set_newline_format(format, GMIME_NEWLINE_FORMAT_UNIX);
  const Owned<GMimeStream> stream(g_mime_stream_mem_new());
  g_mime_object_write_to_stream(GMIME_OBJECT(message), format, stream.get());
  g_mime_format_options_free(format);
  const GByteArray* const bytes = g_mime_stream_mem_get_byte_array(GMIME_STREAM_MEM(stream.get()));
  return {reinterpret_cast<const char*>(bytes->data), bytes->len};
}

}  // namespace

std::string WriteMail(const TextMail& mail) {
  static const bool started = (g_mime_init(), true);
  static_cast<void>(started);
  const Owned<GMimeMessage> message(g_mime_message_new(TRUE));
  GMimeObject* const object = GMIME_OBJECT(message.get());
  g_mime_message_add_mailbox(message.get(), GMIME_ADDRESS_TYPE_FROM, FieldText(mail.FromName).c_str(),
                             FieldText(mail.FromAddress).c_str());
  g_mime_message_set_subject(message.get(), FieldText(mail.Subject).c_str(), "UTF-8");
  if (GDateTime* const date = g_date_time_new_from_unix_utc(mail.Date)) {
    g_mime_message_set_date(message.get(), date);
    g_date_time_unref(date);
  }
  g_mime_message_set_message_id(message.get(), mail.MessageId.c_str());
  if (!mail.InReplyTo.empty()) {
    const std::string earlier = "<" + mail.InReplyTo + ">";
    g_mime_object_set_header(object, "In-Reply-To", earlier.c_str(), nullptr);
    g_mime_object_set_header(object, "References", earlier.c_str(), nullptr);
  }
  g_mime_object_set_header(object, "MIME-Version", "1.0", nullptr);
  const Owned<GMimeTextPart> part = TextPart(WellFormedUtf8(mail.Text));
  g_mime_message_set_mime_part(message.get(), GMIME_OBJECT(part.get()));
  return BytesOf(message.get());
}

}  // namespace Mime
