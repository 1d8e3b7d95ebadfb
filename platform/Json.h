// Json: writes objects and arrays as one line of JSON text in UTF-8.
//
//   JsonArray users;
//   users.Add(JsonObject().Add("key", 1).Add("name", name));
//   std::cout << JsonObject().Add("users", users).Text() << '\n';
//
// Names keep the order in which they were added. Control characters and lone surrogates are written as
// \uXXXX, so that the output is safe on a terminal; a reader gets the text back unchanged. No failure; any
// thread.
#pragma once

#include <concepts>
#include <string>
#include <string_view>

#include "platform/Text.h"

namespace Platform {

class JsonArray;
class JsonObject;

class JsonValue {
 public:
  JsonValue(StringView text);
  JsonValue(const String& text) : JsonValue(StringView(text)) {}
  JsonValue(const char16_t* text) : JsonValue(StringView(text)) {}
  template <std::same_as<bool> T>
  JsonValue(T value) : text_(value ? "true" : "false") {}
  template <std::integral T>
  requires(!std::same_as<T, bool>) JsonValue(T number) : text_(std::to_string(number)) {}
  JsonValue(const JsonObject& object);
  JsonValue(const JsonArray& array);

  const std::string& Text() const { return text_; }

 private:
  std::string text_;
};

class JsonObject {
 public:
  JsonObject& Add(std::string_view name, const JsonValue& value);
  std::string Text() const { return "{" + members_ + "}"; }

 private:
  std::string members_;
};

class JsonArray {
 public:
  JsonArray& Add(const JsonValue& value);
  std::string Text() const { return "[" + elements_ + "]"; }

 private:
  std::string elements_;
};

}  // namespace Platform
