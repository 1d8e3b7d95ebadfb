#include "mime/MailBody.h"

#include <cstring>
#include <memory>

#include "mime/Base64.h"
#include "mime/Charset.h"
#include "mime/FlowedText.h"
#include "mime/HtmlText.h"

namespace Mime {
namespace {

struct Unreference {
  void operator()(void* object) const { g_object_unref(object); }
};

// The parts that could be the text, the first of each kind.
struct Candidates {
  GMimePart* Plain = nullptr;
  GMimePart* Html = nullptr;
  GMimePart* NamedPlain = nullptr;  // has a file's name, though it isn't said to be an attachment
};

void Consider(GMimePart* part, Candidates& found) {
  if (g_mime_part_is_attachment(part)) return;
  const char* label = g_mime_object_get_header(GMIME_OBJECT(part), "Content-Type");
  const bool unreadable = label && !std::strchr(label, '/');  // counts as plain text
  GMimeContentType* type = g_mime_object_get_content_type(GMIME_OBJECT(part));
  if (g_mime_content_type_is_type(type, "text", "html")) {
    if (!found.Html) found.Html = part;
  } else if (unreadable || g_mime_content_type_is_type(type, "text", "plain")) {
    GMimePart*& place = g_mime_part_get_filename(part) ? found.NamedPlain : found.Plain;
    if (!place) place = part;
  }
}

void Walk(GMimeObject* object, Candidates& found) {
  if (GMIME_IS_PART(object)) return Consider(GMIME_PART(object), found);
  if (!GMIME_IS_MULTIPART(object)) return;
  GMimeMultipart* multipart = GMIME_MULTIPART(object);
  const int count = g_mime_multipart_get_count(multipart);
  for (int i = 0; i < count && !found.Plain; ++i) Walk(g_mime_multipart_get_part(multipart, i), found);
}

std::string Parameter(GMimePart* part, const char* name) {
  const char* value =
      g_mime_content_type_get_parameter(g_mime_object_get_content_type(GMIME_OBJECT(part)), name);
  return value ? value : "";
}

// The part's bytes with its transfer encoding undone.
std::string ContentOf(GMimePart* part) {
  GMimeDataWrapper* content = g_mime_part_get_content(part);
  if (!content) return {};
  const std::unique_ptr<GMimeStream, Unreference> stream(g_mime_stream_mem_new());
  const bool base64 = g_mime_data_wrapper_get_encoding(content) == GMIME_CONTENT_ENCODING_BASE64;
  if (base64) {
    g_mime_stream_write_to_stream(g_mime_data_wrapper_get_stream(content), stream.get());
  } else {
    g_mime_data_wrapper_write_to_stream(content, stream.get());
  }
  const GByteArray* bytes = g_mime_stream_mem_get_byte_array(GMIME_STREAM_MEM(stream.get()));
  const std::string_view taken(reinterpret_cast<const char*>(bytes->data), bytes->len);
  if (!base64) return std::string(taken);
  std::string decoded;
  Base64Decoder decoder;
  decoder.Append(decoded, taken);
  decoder.Finish(decoded);
  return decoded;
}

// A byte order mark says how the bytes are to be read and is no part of the text.
String WithoutMark(String text) {
  if (text.starts_with(u'\uFEFF')) text.erase(0, 1);
  return text;
}

// The text of a multipart whose boundary never comes, so that it has no part at all.
String PartlessText(GMimeObject* root) {
  if (!root || !GMIME_IS_MULTIPART(root) || g_mime_multipart_get_count(GMIME_MULTIPART(root)) > 0) return {};
  const char* text = g_mime_multipart_get_prologue(GMIME_MULTIPART(root));
  return text ? GuessText(text) : String();
}

}  // namespace

String BodyOf(GMimeMessage* message) {
  Candidates found;
  GMimeObject* root = g_mime_message_get_mime_part(message);
  if (root) Walk(root, found);
  if (!found.Plain && !found.Html) found.Plain = found.NamedPlain;
  if (found.Plain) {
    String text = WithoutMark(DecodeText(ContentOf(found.Plain), Parameter(found.Plain, "charset")));
    if (g_ascii_strcasecmp(Parameter(found.Plain, "format").c_str(), "flowed") != 0) return text;
    return UnflowText(text, g_ascii_strcasecmp(Parameter(found.Plain, "delsp").c_str(), "yes") == 0);
  }
  if (!found.Html) return PartlessText(root);
  const std::string bytes = ContentOf(found.Html);
  std::string charset = Parameter(found.Html, "charset");
  if (charset.empty()) charset = HtmlCharset(bytes);
  return HtmlToText(WithoutMark(DecodeText(bytes, charset)));
}

}  // namespace Mime
