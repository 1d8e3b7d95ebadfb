#include "mime/PartText.h"

#include <cstring>

#include "mime/Charset.h"
#include "mime/CharsetLabels.h"
#include "mime/EnrichedText.h"
#include "mime/FlowedText.h"
#include "mime/HtmlText.h"
#include "mime/TransferEncoding.h"
#include "mime/UuencodedFiles.h"

namespace Mime {
namespace {

bool HasParameter(GMimePart* part, const char* name, const char* value) {
  return g_ascii_strcasecmp(ParameterOf(part, name).c_str(), value) == 0;
}

std::string CharsetOf(GMimePart* part, std::string_view content) {
  std::string charset = ParameterOf(part, "charset");
  const bool saysNothing = charset.empty() || ConverterOfLabel(charset) == "";
  if (saysNothing && KindOf(part) == TextKind::Html) charset = HtmlCharset(content);
  return charset;
}

}  // namespace

TextKind KindOf(GMimePart* part) {
  GMimeContentType* type = g_mime_object_get_content_type(GMIME_OBJECT(part));
  const auto is = [type](const char* subtype) { return g_mime_content_type_is_type(type, "text", subtype); };
  if (is("html")) return TextKind::Html;
  if (is("enriched") || is("markdown") || is("x-markdown")) return TextKind::Markup;
  if (is("plain")) return TextKind::Plain;
  const char* label = g_mime_object_get_header(GMIME_OBJECT(part), "Content-Type");
  const bool unreadable = label && !std::strchr(label, '/');
  return unreadable ? TextKind::Plain : TextKind::None;
}

std::string ParameterOf(GMimePart* part, const char* name) {
  const char* value =
      g_mime_content_type_get_parameter(g_mime_object_get_content_type(GMIME_OBJECT(part)), name);
  return value ? value : "";
}

std::string_view ContentOf(const ParsedMessage& message, GMimePart* part, std::string& storage) {
  const char* encoding = g_mime_object_get_header(GMIME_OBJECT(part), "Content-Transfer-Encoding");
  return DecodeTransfer(message.RawContent(part), encoding ? encoding : "", storage);
}

String TextOf(const ParsedMessage& message, GMimePart* part, std::string& charset) {
  std::string storage;
  const std::string_view content = ContentOf(message, part, storage);
  const std::string label = CharsetOf(part, content);
  if (charset.empty()) charset = label;
  String text = DecodeText(content, label);
  storage = {};

  if (KindOf(part) == TextKind::Html) return HtmlToText(text);
  GMimeContentType* type = g_mime_object_get_content_type(GMIME_OBJECT(part));
  if (g_mime_content_type_is_type(type, "text", "enriched")) return EnrichedToText(text);
  RemoveUuencodedFiles(text);
  if (!HasParameter(part, "format", "flowed")) return text;
  return UnflowText(text, HasParameter(part, "delsp", "yes"));
}

bool IsBlankText(StringView text) {
  return text.find_first_not_of(u" \t\r\n\f\v\u00A0\u00AD\u200B\u200C\u200D\u2060\uFEFF") == StringView::npos;
}

}  // namespace Mime
