#include "mime/HtmlEntities.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <vector>

#include "mime/HtmlEntityTable.h"
#include "platform/Hex.h"

namespace Mime {
namespace {

struct Entity {
  std::string_view Name;
  char32_t Characters[2];  // the second is 0 if there is only one
  bool WithoutSemicolon;
};

constexpr std::size_t kLongestName = 31;
constexpr std::size_t kLongestWithoutSemicolon = 6;
constexpr char32_t kReplacement = 0xFFFD;

std::vector<Entity> ReadTable() {
  std::vector<Entity> entities;
  std::string_view rest = kHtmlEntityTable;
  const auto next = [&rest] {
    rest.remove_prefix(std::min(rest.find_first_not_of(" \n"), rest.size()));
    const std::string_view word = rest.substr(0, rest.find_first_of(" \n"));
    rest.remove_prefix(word.size());
    return word;
  };
  for (std::string_view name = next(); !name.empty(); name = next()) {
    Entity entity{name, {}, name.starts_with('*')};
    if (entity.WithoutSemicolon) entity.Name.remove_prefix(1);
    const std::string_view codes = next();
    std::uint32_t code = 0;
    const auto first = std::from_chars(codes.data(), codes.data() + codes.size(), code, 16);
    entity.Characters[0] = code;
    if (*first.ptr == '+') {
      std::from_chars(first.ptr + 1, codes.data() + codes.size(), code, 16);
      entity.Characters[1] = code;
    }
    entities.push_back(entity);
  }
  std::sort(entities.begin(), entities.end(),
            [](const Entity& a, const Entity& b) { return a.Name < b.Name; });
  return entities;
}

const Entity* FindEntity(std::string_view name) {
  static const std::vector<Entity> entities = ReadTable();
  const auto found =
      std::lower_bound(entities.begin(), entities.end(), name,
                       [](const Entity& entity, std::string_view wanted) { return entity.Name < wanted; });
  return found != entities.end() && found->Name == name ? &*found : nullptr;
}

HtmlReference Found(const Entity& entity, std::size_t length) {
  HtmlReference reference{{}, length};
  Platform::AppendCodePoint(reference.Characters, entity.Characters[0]);
  if (entity.Characters[1] != 0) Platform::AppendCodePoint(reference.Characters, entity.Characters[1]);
  return reference;
}

// The value of a digit, or -1.
int DigitOf(char16_t c, std::uint32_t base) {
  const int digit = Platform::HexDigit(c);
  return digit < static_cast<int>(base) ? digit : -1;
}

bool IsAlphanumeric(char16_t c) {
  const int lower = c | 0x20;
  return (c >= u'0' && c <= u'9') || (c < 0x80 && lower >= 'a' && lower <= 'z');
}

HtmlReference ReadNumber(StringView text) {
  const bool hexadecimal = text.size() > 2 && (text[2] | 0x20) == u'x';
  const std::uint32_t base = hexadecimal ? 16 : 10;
  const std::size_t first = hexadecimal ? 3 : 2;
  constexpr std::uint32_t kBeyondUnicode = 0x110000;
  std::uint32_t code = 0;
  std::size_t at = first;
  for (; at < text.size() && DigitOf(text[at], base) >= 0; ++at)
    code = std::min(code * base + static_cast<std::uint32_t>(DigitOf(text[at], base)), kBeyondUnicode);
  if (at == first) return {};
  if (at < text.size() && text[at] == u';') ++at;
  HtmlReference reference{{}, at};
  const bool noCharacter = code == 0 || code >= kBeyondUnicode ||
                           (code < 0x10000 && Platform::IsSurrogate(static_cast<char16_t>(code)));
  Platform::AppendCodePoint(reference.Characters, noCharacter ? kReplacement : code);
  return reference;
}

HtmlReference ReadName(StringView text, bool inAttribute) {
  std::string name;
  for (const char16_t c : text.substr(1, kLongestName)) {
    if (!IsAlphanumeric(c)) break;
    name += static_cast<char>(c);
  }
  const auto behind = [&text](std::size_t length) {
    return length + 1 < text.size() ? text[length + 1] : u'\0';
  };
  if (behind(name.size()) == u';') {
    if (const Entity* entity = FindEntity(name)) return Found(*entity, name.size() + 2);
  }
  for (std::size_t length = std::min(name.size(), kLongestWithoutSemicolon); length > 1; --length) {
    const Entity* entity = FindEntity(std::string_view(name).substr(0, length));
    if (!entity || !entity->WithoutSemicolon) continue;
    const char16_t next = behind(length);
    if (inAttribute && (next == u'=' || IsAlphanumeric(next))) return {};
    return Found(*entity, length + 1);
  }
  return {};
}

}  // namespace

HtmlReference ReadHtmlReference(StringView text, bool inAttribute) {
  return text.size() > 1 && text[1] == u'#' ? ReadNumber(text) : ReadName(text, inAttribute);
}

String DecodeHtmlAttribute(StringView value) {
  String decoded;
  decoded.reserve(value.size());  // a reference is longer than its characters
  while (!value.empty()) {
    const HtmlReference reference = value.front() == u'&' ? ReadHtmlReference(value, true) : HtmlReference();
    if (reference.Length == 0) {
      decoded += value.front();
      value.remove_prefix(1);
      continue;
    }
    for (const char16_t c : reference.Characters) decoded += WithoutC1(c);
    value.remove_prefix(reference.Length);
  }
  return decoded;
}

char16_t WithoutC1(char16_t c) {
  // Characters that windows-1252 doesn't define are unchanged.
  constexpr char16_t kMeanings[] = {0x20AC, 0x81,   0x201A, 0x192,  0x201E, 0x2026, 0x2020, 0x2021,
                                    0x2C6,  0x2030, 0x160,  0x2039, 0x152,  0x8D,   0x17D,  0x8F,
                                    0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                    0x2DC,  0x2122, 0x161,  0x203A, 0x153,  0x9D,   0x17E,  0x178};
  return c >= 0x80 && c < 0xA0 ? kMeanings[c - 0x80] : c;
}

}  // namespace Mime
