#include "gateway/policy/AuthenticationResults.h"

#include <algorithm>

#include "mime/MailHeader.h"

namespace Gateway {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

bool IsBlank(char c) {
  return kBlanks.find(c) != std::string_view::npos;
}

// Reads one part of the field, between two semicolons that are not quoted. The text has no comments.
class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text) {}

  bool AtEnd() const { return at_ >= text_.size(); }

  void SkipBlanks() {
    while (!AtEnd() && IsBlank(text_[at_])) ++at_;
  }

  // The name before the next equals sign, in lower case and without the blanks that it may contain,
  // with the sign taken as well. Empty at the end, and for words without the sign, which are all skipped.
  std::string Name() {
    std::string name;
    while (!AtEnd() && text_[at_] != '=') {
      const char c = text_[at_++];
      if (!IsBlank(c)) name += c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
    }
    if (AtEnd()) return {};
    ++at_;
    return name;
  }

  // A word: it ends at a blank that is not quoted. Quotes around it or a part of it are removed.
  std::string Word() {
    SkipBlanks();
    std::string word;
    for (bool quoted = false; !AtEnd() && (quoted || !IsBlank(text_[at_])); ++at_) {
      if (text_[at_] == '"') {
        quoted = !quoted;
      } else {
        if (quoted && text_[at_] == '\\' && at_ + 1 < text_.size()) ++at_;
        word += text_[at_];
      }
    }
    return word;
  }

  // The text from here to the next semicolon that is not quoted, or to the end, both taken. Sets whole to
  // false if a quote is not closed.
  std::string_view Part(bool& whole) {
    const std::size_t begin = at_;
    bool quoted = false;
    for (; !AtEnd() && (quoted || text_[at_] != ';'); ++at_) {
      if (text_[at_] == '"') quoted = !quoted;
      if (quoted && text_[at_] == '\\' && at_ + 1 < text_.size()) ++at_;
    }
    whole = whole && !quoted;
    const std::string_view part = text_.substr(begin, at_ - begin);
    if (!AtEnd()) ++at_;
    return part;
  }

 private:
  std::string_view text_;
  std::size_t at_ = 0;
};

std::string LowerCase(std::string text) {
  for (char& c : text) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
  return text;
}

// Removes the version after a method's name. Returns false for another version than 1.
bool TakeVersion(std::string& method) {
  const std::size_t slash = method.find('/');
  if (slash == std::string::npos) return true;
  const bool known = method.substr(slash) == "/1";
  method.resize(slash);
  return known;
}

}  // namespace

bool IsServerName(std::string_view name) {
  const auto isPart = [](char c) {
    return static_cast<unsigned char>(c) > ' ' && c != '\x7f' &&
           std::string_view("();\"").find(c) == std::string_view::npos;
  };
  return !name.empty() && std::ranges::all_of(name, isPart);
}

std::string_view MethodResult::Domain(std::string_view property) const {
  const auto found =
      std::ranges::find(Properties, property, [](const auto& p) { return std::string_view(p.first); });
  if (found == Properties.end()) return {};
  const std::string_view value = found->second;
  return value.substr(value.rfind('@') + 1);  // npos + 1 is 0
}

AuthenticationResults ReadAuthenticationResults(std::string_view value) {
  const std::string text = Mime::WithoutComments(value);
  AuthenticationResults all;
  Reader parts(text);
  Reader head(parts.Part(all.Readable));
  all.Server = head.Word();
  const std::string version = head.Word();
  head.SkipBlanks();
  if (!head.AtEnd() || (!version.empty() && version != "1")) all.Readable = false;
  while (!parts.AtEnd()) {
    Reader part(parts.Part(all.Readable));
    MethodResult result;
    result.Method = part.Name();
    if (result.Method.empty()) continue;  // "none", or nothing after the last semicolon
    if (!TakeVersion(result.Method)) all.Readable = false;
    result.Result = LowerCase(part.Word());
    for (std::string name = part.Name(); !name.empty(); name = part.Name())
      result.Properties.emplace_back(std::move(name), part.Word());
    all.Results.push_back(std::move(result));
  }
  if (!all.Readable) all.Results.clear();
  return all;
}

}  // namespace Gateway
