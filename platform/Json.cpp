#include "platform/Json.h"

#include "platform/Hex.h"
#include "platform/TerminalText.h"

namespace Platform {

namespace {

std::string Quoted(StringView text) {
  std::string out = "\"";
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t c = text[i];
    if (c == u'"' || c == u'\\') {
      out += '\\';
      out += static_cast<char>(c);
    } else if (c == u'\n') {
      out += "\\n";
    } else if (IsSurrogatePair(text, i)) {
      out += ToUtf8(text.substr(i++, 2));
    } else if (IsUnsafeOnTerminal(c) || IsSurrogate(c)) {
      out += "\\u" + ToUtf8(HexText(c));
    } else if (c < 0x80) {
      out += static_cast<char>(c);
    } else {
      out += ToUtf8(text.substr(i, 1));
    }
  }
  return out + '"';
}

void Append(std::string& list, const std::string& element) {
  if (!list.empty()) list += ',';
  list += element;
}

}  // namespace

JsonValue::JsonValue(StringView text) : text_(Quoted(text)) {}
JsonValue::JsonValue(const JsonObject& object) : text_(object.Text()) {}
JsonValue::JsonValue(const JsonArray& array) : text_(array.Text()) {}

JsonObject& JsonObject::Add(std::string_view name, const JsonValue& value) {
  Append(members_, Quoted(FromUtf8(name)) + ':' + value.Text());
  return *this;
}

JsonArray& JsonArray::Add(const JsonValue& value) {
  Append(elements_, value.Text());
  return *this;
}

}  // namespace Platform
