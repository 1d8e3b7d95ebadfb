#include "mime/TransferEncoding.h"

#include <gmime/gmime.h>

#include <algorithm>

#include "mime/Base64.h"

namespace Mime {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

// The label's letters and digits in lower case, up to a semicolon and without comments.
std::string NormalizedLabel(std::string_view label) {
  std::string name;
  bool comment = false;
  for (const char c : label.substr(0, label.find(';'))) {
    if (c == '(') comment = true;
    if (!comment && g_ascii_isalnum(c)) name += g_ascii_tolower(c);
    if (c == ')') comment = false;
  }
  return name;
}

// Removes the first line from the bytes and returns it with its line end.
std::string_view TakeLine(std::string_view& bytes) {
  const std::size_t end = std::min(bytes.find('\n'), bytes.size() - 1);
  const std::string_view line = bytes.substr(0, end + 1);
  bytes.remove_prefix(line.size());
  return line;
}

std::string_view WithoutBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  return first == std::string_view::npos ? std::string_view()
                                         : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool IsBase64Letter(char c) {
  return g_ascii_isalnum(c) || c == '+' || c == '/';
}

// True for complete groups of base64, as in a line of it: four letters each, of which the last two may be
// padding.
bool IsWholeGroups(std::string_view text) {
  if (text.size() % 4 != 0) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool padding = text[i] == '=' && (i % 4 == 3 || (i % 4 == 2 && text[i + 1] == '='));
    if (!padding && !IsBase64Letter(text[i])) return false;
  }
  return true;
}

// True for a line that can't be base64: several words, one of which isn't base64, or a separator line in
// front of a mailing list's footer.
bool IsPlainText(std::string_view line) {
  if (std::ranges::none_of(line, IsBase64Letter))
    return line.size() > 1 && line.find('=') == std::string_view::npos;
  if (line.find_first_of(" \t") == std::string_view::npos) return false;
  while (!line.empty()) {
    const std::size_t end = std::min(line.find_first_of(" \t"), line.size());
    if (!IsWholeGroups(line.substr(0, end))) return true;
    line.remove_prefix(std::min(end + 1, line.size()));
  }
  return false;
}

// Padding ends the data; the rest is the footer of a mailing list or a virus scanner, unless it is base64
// again, since some programs pad each line. Without padding a line of plain text ends the data, too.
void DecodeBase64(std::string_view raw, std::string& bytes) {
  bytes.reserve(raw.size() / 4 * 3 + 8);
  Base64Decoder decoder;
  std::size_t letters = 0;
  bool padded = false;
  while (!raw.empty()) {
    std::string_view line = WithoutBlanks(TakeLine(raw));
    const bool whole = letters % 4 == 0 && IsWholeGroups(line);
    if (!whole && (padded || (letters % 4 == 0 && IsPlainText(line)))) return;
    while (!line.empty()) {
      const std::size_t padding = std::min(line.find('='), line.size());
      const std::size_t end = std::min(line.find_first_not_of('=', padding), line.size());
      decoder.Append(bytes, line.substr(0, padding));
      letters += static_cast<std::size_t>(std::ranges::count_if(line.substr(0, padding), IsBase64Letter));
      line.remove_prefix(end);
      if (padding == end) continue;
      decoder.Finish(bytes);
      letters = 0;
      padded = true;
      if (!whole && !WithoutBlanks(line).empty()) return;
    }
  }
  decoder.Finish(bytes);
}

// Blanks at a line's end were added in transport and are removed. An equals sign that begins no escape is
// kept.
void DecodeQuotedPrintable(std::string_view raw, std::string& bytes) {
  bytes.reserve(raw.size());
  while (!raw.empty()) {
    std::string_view line = TakeLine(raw);
    const std::size_t end = line.find_last_not_of(kBlanks) + 1;
    std::string_view lineEnd;
    if (line.ends_with('\n')) lineEnd = line.ends_with("\r\n") ? "\r\n" : "\n";
    line = line.substr(0, end);
    if (line.ends_with('=')) {
      line.remove_suffix(1);
      lineEnd = {};
    }
    for (std::size_t sign = line.find('='); sign != std::string_view::npos; sign = line.find('=')) {
      const bool escape =
          sign + 2 < line.size() && g_ascii_isxdigit(line[sign + 1]) && g_ascii_isxdigit(line[sign + 2]);
      bytes.append(line.substr(0, sign));
      bytes += escape ? static_cast<char>(g_ascii_xdigit_value(line[sign + 1]) * 16 +
                                          g_ascii_xdigit_value(line[sign + 2]))
                      : '=';
      line.remove_prefix(sign + (escape ? 3 : 1));
    }
    bytes.append(line).append(lineEnd);
  }
}

// The data begins after the line "begin 644 NAME".
void DecodeUuencoded(std::string_view raw, std::string& bytes) {
  while (!raw.empty() && !TakeLine(raw).starts_with("begin ")) continue;
  GMimeEncoding decoder;
  g_mime_encoding_init_decode(&decoder, GMIME_CONTENT_ENCODING_UUENCODE);
  bytes.resize(g_mime_encoding_outlen(&decoder, raw.size()));
  bytes.resize(g_mime_encoding_flush(&decoder, raw.data(), raw.size(), bytes.data()));
}

}  // namespace

std::string_view DecodeTransfer(std::string_view raw, std::string_view label, std::string& storage) {
  const std::string name = NormalizedLabel(label);
  storage.clear();
  if (name == "base64" || name == "xbase64" || name == "b64") {
    DecodeBase64(raw, storage);
    return storage.empty() ? raw : storage;
  }
  if (name == "quotedprintable" || name == "xquotedprintable" || name == "qp") {
    DecodeQuotedPrintable(raw, storage);
    return storage;
  }
  if (name == "uuencode" || name == "xuuencode" || name == "uue" || name == "xuue") {
    DecodeUuencoded(raw, storage);
    return storage;
  }
  return raw;
}

}  // namespace Mime
