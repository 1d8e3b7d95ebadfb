#include "platform/JsonReader.h"

#include "platform/Hex.h"

namespace Platform {
namespace {

// Each operation takes what it reads; after the first error, ok is false for good.
struct Reader {
  std::string_view Rest;
  bool Ok = true;

  void SkipBlanks() {
    const std::size_t next = Rest.find_first_not_of(" \t\r\n");
    Rest.remove_prefix(next == std::string_view::npos ? Rest.size() : next);
  }

  bool Take(char c) {
    SkipBlanks();
    if (!Rest.starts_with(c)) return false;
    Rest.remove_prefix(1);
    return true;
  }

  void Require(char c) { Ok = Ok && Take(c); }

  char16_t Hex() {
    unsigned value = 0;
    for (std::size_t i = 0; i < 4; ++i) {
      const int digit = i < Rest.size() ? HexDigit(static_cast<unsigned char>(Rest[i])) : -1;
      if (digit < 0) Ok = false;
      value = value * 16 + static_cast<unsigned>(digit & 15);
    }
    if (Ok) Rest.remove_prefix(4);
    return static_cast<char16_t>(value);
  }

  char16_t Escaped() {
    constexpr std::string_view kLetters = "\"\\/bfnrt";
    constexpr StringView kMeanings = u"\"\\/\b\f\n\r\t";
    const char letter = Rest.empty() ? ' ' : Rest.front();
    if (!Rest.empty()) Rest.remove_prefix(1);
    if (letter == 'u') return Hex();
    const std::size_t found = kLetters.find(letter);
    if (found == std::string_view::npos) Ok = false;
    return Ok ? kMeanings[found] : u' ';
  }

  String Text() {
    String text;
    Require('"');
    while (Ok) {
      const std::size_t end = Rest.find_first_of("\"\\");
      if (end == std::string_view::npos) {
        Ok = false;
        break;
      }
      text += FromUtf8(Rest.substr(0, end));
      const bool last = Rest[end] == '"';
      Rest.remove_prefix(end + 1);
      if (last) break;
      text += Escaped();
    }
    return text;
  }
};

}  // namespace

std::optional<std::map<std::string, String>> ReadJsonTexts(std::string_view json) {
  Reader reader{json};
  std::map<std::string, String> members;
  reader.Require('{');
  bool more = reader.Ok && !reader.Take('}');
  while (more) {
    const std::string name = ToUtf8(reader.Text());
    reader.Require(':');
    reader.Ok = members.emplace(name, reader.Text()).second && reader.Ok;
    more = reader.Ok && reader.Take(',');
    if (!more) reader.Require('}');
  }
  reader.SkipBlanks();
  if (!reader.Ok || !reader.Rest.empty()) return std::nullopt;
  return members;
}

}  // namespace Platform
