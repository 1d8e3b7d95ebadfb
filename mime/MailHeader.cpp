#include "mime/MailHeader.h"

#include <glib.h>

#include <algorithm>

#include "mime/Charset.h"
#include "mime/HeaderText.h"
#include "mime/MessageParser.h"

namespace Mime {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// Where a quoted string that begins at a position ends: after its closing quote; npos without one.
std::size_t EndOfQuotes(std::string_view text, std::size_t begin) {
  for (std::size_t i = begin + 1; i < text.size(); ++i) {
    if (text[i] == '"') return i + 1;
    if (text[i] == '\\') ++i;
  }
  return std::string_view::npos;
}

// True for what may precede an address in angle brackets: words, quoted strings and encoded words.
// Any other "@", bracket or separator could be read as another address.
bool IsDisplayName(std::string_view text) {
  for (std::size_t i = 0; i < text.size();) {
    if (text[i] == '"') {
      i = EndOfQuotes(text, i);
      if (i == std::string_view::npos) return false;
    } else if (text.compare(i, 2, "=?") == 0) {
      // The end of the charset, of the encoding and of the text, which has no question mark.
      for (int part = 0; part < 3 && i != std::string_view::npos; ++part) i = text.find('?', i + 2);
      if (i == std::string_view::npos || text.compare(i, 2, "?=") != 0) return false;
      i += 2;
    } else if (std::string_view("@<>,:;()[]\\").find(text[i]) != std::string_view::npos) {
      return false;
    } else {
      ++i;
    }
  }
  return true;
}

}  // namespace

bool IsNamed(const HeaderField& field, std::string_view name) {
  return field.Name.size() == name.size() &&
         g_ascii_strncasecmp(field.Name.data(), name.data(), name.size()) == 0;
}

const HeaderField* FirstField(const MailHeader& header, std::string_view name) {
  const auto found = std::ranges::find_if(header.Fields, [&](const auto& f) { return IsNamed(f, name); });
  return found == header.Fields.end() ? nullptr : &*found;
}

MailHeader HeaderOf(const ParsedMessage& message) {
  MailHeader header;
  std::size_t senders = 0;
  for (const auto& [name, value] : message.Fields()) {
    HeaderField& field = header.Fields.emplace_back();
    field.Name = Trimmed(name);
    field.Value = UnfoldHeader(value.substr(0, MailHeader::kLongestValue));
    field.Whole = value.size() <= MailHeader::kLongestValue;
    // A second one was renamed.
    if (IsNamed(field, "From") || IsNamed(field, "Xrom")) ++senders;
  }
  const HeaderField* from = FirstField(header, "From");
  if (from && senders == 1 && from->Whole) header.OnlySender = OnlyAddress(from->Value);
  return header;
}

std::optional<String> OnlyAddress(std::string_view value) {
  const std::string text = WithoutComments(UnfoldHeader(value));
  std::string_view address = text;
  if (address.ends_with('>')) {
    const std::size_t open = address.rfind('<');
    if (open == std::string_view::npos || !IsDisplayName(address.substr(0, open))) return std::nullopt;
    address = Trimmed(address.substr(open + 1, address.size() - open - 2));
  }
  const bool single = std::ranges::count(address, '@') == 1 && !address.starts_with('@') &&
                      !address.ends_with('@') &&
                      address.find_first_of("<>,:;()\\\" \t\r\n") == std::string_view::npos;
  if (!single) return std::nullopt;
  return GuessText(address);
}

std::string WithoutComments(std::string_view value) {
  std::string text;
  std::size_t depth = 0;
  bool quoted = false;
  for (std::size_t i = 0; i < value.size(); ++i) {
    const char c = value[i];
    const bool pair = c == '\\' && i + 1 < value.size() && (quoted || depth > 0);
    if (depth == 0 && (quoted || c != '(')) {
      text += c;
      if (pair) text += value[i + 1];
      if (c == '"') quoted = !quoted;
    } else if (c == '(') {
      if (depth++ == 0) text += ' ';
    } else if (c == ')') {
      --depth;
    }
    if (pair) ++i;
  }
  return std::string(Trimmed(text));
}

}  // namespace Mime
