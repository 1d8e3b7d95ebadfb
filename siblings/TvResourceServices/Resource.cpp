#include "siblings/TvResourceServices/Resource.h"

#include "runtime/TextTemplate.h"

namespace TvResourceServices {

const Resource::Table& Resource::Members() {
  static const Table table = {Method(u"LoadResources", 2, &Resource::LoadResources),
                              Method(u"ResourceString", 1, &Resource::ResourceString),
                              Method(u"ResourceStringV", 2, &Resource::ResourceStringV),
                              Method(u"ResourceStrings", 3, &Resource::ResourceStrings),
                              Method(u"GetFontName", 0, &Resource::GetFontName)};
  return table;
}

Value Resource::LoadResources(std::span<Value> arguments) {
  languages_ = {};
  Runtime::LoadLanguages(arguments[0].ToString(), languages_);
  return {};
}

Value Resource::ResourceString(std::span<Value> arguments) {
  return Text(arguments[0].ToInt32(), {});
}

Value Resource::ResourceStringV(std::span<Value> arguments) {
  std::vector<String> texts;
  for (const Value& element : arguments[1].ToArray()) texts.push_back(element.ToString());
  return Text(arguments[0].ToInt32(), texts);
}

Value Resource::ResourceStrings(std::span<Value> arguments) {
  const String texts[] = {arguments[1].ToString(), arguments[2].ToString()};
  return Text(arguments[0].ToInt32(), texts);
}

Value Resource::GetFontName(std::span<Value>) {
  for (const auto& catalogue : {languages_.Own, languages_.English}) {
    if (catalogue && !catalogue->FontName().empty()) return catalogue->FontName();
  }
  return String();
}

String Resource::Text(std::int32_t number, std::span<const String> arguments) const {
  for (const auto& catalogue : {languages_.Own, languages_.English}) {
    if (!catalogue) continue;
    if (const String* text = catalogue->Find(number)) return Runtime::Expand(*text, arguments);
  }
  return u"(no text for message " + FromUtf8(std::to_string(number)) + u")";
}

}  // namespace TvResourceServices
