// NumberedTexts: a resource service whose texts tell how they were asked for: "T10044", "T10044[a|b]" for an
// array, "T10030(a|b)" for two strings. Chosen numbers may have a text of their own.
#pragma once

#include <map>

#include "platform/Object.h"

namespace Tests {

using namespace Platform;

class NumberedTexts : public Object {
 public:
  explicit NumberedTexts(std::map<std::int32_t, String> own = {}) : own_(std::move(own)) {}

  Value Call(StringView member, std::span<Value> arguments) override {
    if (member == u"LoadResources" || member == u"GetFontName") return {};
    const std::int32_t number = arguments[0].ToInt32();
    const auto own = own_.find(number);
    if (own != own_.end()) return own->second;
    const String text = u"T" + Value(number).ToString();
    if (member == u"ResourceString") return text;
    if (member == u"ResourceStringV") return text + u"[" + Joined(arguments[1].ToArray()) + u"]";
    return text + u"(" + Joined(arguments.subspan(1)) + u")";
  }

 private:
  static String Joined(std::span<const Value> values) {
    String joined;
    for (const Value& value : values) joined += (&value == values.data() ? u"" : u"|") + value.ToString();
    return joined;
  }

  std::map<std::int32_t, String> own_;
};

}  // namespace Tests
