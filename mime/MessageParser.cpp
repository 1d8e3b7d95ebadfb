#include "mime/MessageParser.h"

#include <algorithm>

#include "mime/HeaderRepair.h"
#include "mime/LimitCheck.h"

namespace Mime {
namespace {

// Line ends that are a bare CR or CR CR LF become line feeds; other mails are read unchanged.
void RepairLineEnds(std::string& bytes) {
  const std::size_t first = bytes.find_first_of("\r\n");
  if (first == std::string::npos || bytes[first] == '\n' || bytes.compare(first, 2, "\r\n") == 0) return;
  if (bytes.compare(first, 3, "\r\r\n") == 0) {
    std::erase(bytes, '\r');
  } else {
    std::replace(bytes.begin(), bytes.end(), '\r', '\n');
  }
}

Owned<GMimeMessage> Parse(GByteArray* bytes) {
  const Owned<GMimeStream> stream(g_mime_stream_mem_new_with_byte_array(bytes));
  g_mime_stream_mem_set_owner(GMIME_STREAM_MEM(stream.get()), FALSE);
  const Owned<GMimeParser> parser(g_mime_parser_new_with_stream(stream.get()));
  g_mime_parser_set_persist_stream(parser.get(), TRUE);
  return Owned<GMimeMessage>(g_mime_parser_construct_message(parser.get(), nullptr));
}

}  // namespace

ParsedMessage::ParsedMessage(std::string bytes) : bytes_(std::move(bytes)) {
  static const bool started = (g_mime_init(), true);
  static_cast<void>(started);
  RepairLineEnds(bytes_);
  RepairHeaders(bytes_);
  CheckLimits(bytes_);
  lent_ = g_byte_array_new_take(reinterpret_cast<guint8*>(bytes_.data()), bytes_.size());
  message_ = Parse(lent_);
}

ParsedMessage::~ParsedMessage() {
  message_.reset();
  g_byte_array_free(lent_, FALSE);
}

GMimeObject* ParsedMessage::Root() const {
  return message_ ? g_mime_message_get_mime_part(message_.get()) : nullptr;
}

InternetAddressList* ParsedMessage::From() const {
  return message_ ? g_mime_message_get_from(message_.get()) : nullptr;
}

std::string_view ParsedMessage::Field(const char* name) const {
  if (!message_) return {};
  return ValueOf(
      g_mime_header_list_get_header(g_mime_object_get_header_list(GMIME_OBJECT(message_.get())), name));
}

std::vector<std::pair<std::string_view, std::string_view>> ParsedMessage::Fields() const {
  std::vector<std::pair<std::string_view, std::string_view>> fields;
  // The fields of the content, such as Content-Type, are those of the root part.
  for (GMimeObject* object : {message_ ? GMIME_OBJECT(message_.get()) : nullptr, Root()}) {
    if (!object) continue;
    GMimeHeaderList* list = g_mime_object_get_header_list(object);
    for (int i = 0; i < g_mime_header_list_get_count(list); ++i) {
      GMimeHeader* header = g_mime_header_list_get_header_at(list, i);
      fields.emplace_back(g_mime_header_get_name(header), ValueOf(header));
    }
  }
  return fields;
}

std::string_view ParsedMessage::ValueOf(GMimeHeader* header) const {
  if (!header) return {};
  const gint64 offset = g_mime_header_get_offset(header);
  if (offset < 0 || static_cast<std::size_t>(offset) >= bytes_.size()) return {};
  const std::string_view field = std::string_view(bytes_).substr(static_cast<std::size_t>(offset));
  std::size_t end = field.find('\n');
  while (end != std::string_view::npos && end + 1 < field.size() &&
         (field[end + 1] == ' ' || field[end + 1] == '\t'))
    end = field.find('\n', end + 1);
  const std::size_t colon = field.find(':');
  if (colon == std::string_view::npos || colon > end) return {};
  return field.substr(colon + 1, end == std::string_view::npos ? end : end - colon - 1);
}

std::string_view ParsedMessage::RawBody() const {
  const std::string_view bytes = bytes_;
  const std::size_t first = bytes.find('\n');
  for (std::size_t end = first; end != std::string_view::npos; end = bytes.find('\n', end + 1)) {
    const std::string_view next = bytes.substr(end + 1);
    if (next.starts_with('\n')) return next.substr(1);
    if (next.starts_with("\r\n")) return next.substr(2);
  }
  return {};
}

std::string_view ParsedMessage::RawContent(GMimePart* part) const {
  GMimeDataWrapper* content = g_mime_part_get_content(part);
  GMimeStream* stream = content ? g_mime_data_wrapper_get_stream(content) : nullptr;
  if (!stream) return {};
  const auto size = static_cast<gint64>(bytes_.size());
  const gint64 start = std::clamp<gint64>(stream->bound_start, 0, size);
  const gint64 end = stream->bound_end < 0 ? size : std::clamp<gint64>(stream->bound_end, start, size);
  return std::string_view(bytes_).substr(static_cast<std::size_t>(start),
                                         static_cast<std::size_t>(end - start));
}

}  // namespace Mime
