#include "host/deliver/MailBody.h"

#include <memory>

#include "host/deliver/Charset.h"
#include "host/deliver/FlowedText.h"
#include "host/deliver/HtmlText.h"

namespace Host {
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
  GMimeContentType* type = g_mime_object_get_content_type(GMIME_OBJECT(part));
  if (g_mime_content_type_is_type(type, "text", "html")) {
    if (!found.Html) found.Html = part;
  } else if (g_mime_content_type_is_type(type, "text", "plain")) {
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
  g_mime_data_wrapper_write_to_stream(content, stream.get());
  const GByteArray* bytes = g_mime_stream_mem_get_byte_array(GMIME_STREAM_MEM(stream.get()));
  return {reinterpret_cast<const char*>(bytes->data), bytes->len};
}

// A byte order mark says how the bytes are to be read and is no part of the text.
String WithoutMark(String text) {
  if (text.starts_with(u'\uFEFF')) text.erase(0, 1);
  return text;
}

}  // namespace

String BodyOf(GMimeMessage* message) {
  Candidates found;
  if (GMimeObject* root = g_mime_message_get_mime_part(message)) Walk(root, found);
  if (!found.Plain && !found.Html) found.Plain = found.NamedPlain;
  if (found.Plain) {
    String text = WithoutMark(DecodeText(ContentOf(found.Plain), Parameter(found.Plain, "charset")));
    if (g_ascii_strcasecmp(Parameter(found.Plain, "format").c_str(), "flowed") != 0) return text;
    return UnflowText(text, g_ascii_strcasecmp(Parameter(found.Plain, "delsp").c_str(), "yes") == 0);
  }
  if (!found.Html) return {};
  const std::string bytes = ContentOf(found.Html);
  std::string charset = Parameter(found.Html, "charset");
  if (charset.empty()) charset = HtmlCharset(bytes);
  return HtmlToText(WithoutMark(DecodeText(bytes, charset)));
}

}  // namespace Host
