// NumberedTexts: a resource service whose texts contain the number and the arguments: "T10044", "T10044[a|b]"
// for an array, "T10030(a|b)" for two strings. A test can set the texts of some numbers.
#pragma once

#include <map>

#include "platform/Object.h"

namespace Tests {

using namespace Platform;

// "(a|b)"
inline String Joined(std::span<const Value> values, StringView brackets = u"()") {
  String text(brackets.substr(0, 1));
  for (const Value& value : values) text.append(text.size() > 1 ? u"|" : u"").append(value.ToString());
  return text.append(brackets.substr(1));
}

class NumberedTexts : public Object {
 public:
  explicit NumberedTexts(std::map<std::int32_t, String> own = {}) : own_(std::move(own)) {}

  Value Call(StringView member, std::span<Value> arguments) override {
    if (member == u"LoadResources" || member == u"GetFontName") return {};
    const auto own = own_.find(arguments[0].ToInt32());
    if (own != own_.end()) return own->second;
    String text = u"T";
    text += arguments[0].ToString();
    if (member == u"ResourceStringV") text += Joined(arguments[1].ToArray(), u"[]");
    if (member == u"ResourceStrings") text += Joined(arguments.subspan(1));
    return text;
  }

 private:
  std::map<std::int32_t, String> own_;
};

}  // namespace Tests
