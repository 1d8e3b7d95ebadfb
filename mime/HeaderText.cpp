#include "mime/HeaderText.h"

#include <glib.h>

#include <algorithm>
#include <optional>

#include "mime/Base64.h"
#include "mime/Charset.h"

namespace Mime {
namespace {

constexpr std::string_view kBlanks = " \t";

// An encoded word, =?charset*language?B or Q?text?=, and where it ends in the header.
struct EncodedWord {
  std::string Charset;
  bool Base64 = false;
  std::string_view Text;
  std::size_t End = 0;
};

// The encoded word at position, where "=?" is. Blanks and question marks inside a Q word, which the standard
// forbids, are accepted, since mail programs write them. A word in which another one begins is incomplete.
std::optional<EncodedWord> ReadEncodedWord(std::string_view header, std::size_t position) {
  constexpr std::size_t kLongestCharset = 80;
  const std::size_t charset = position + 2;
  const std::size_t encoding = charset + header.substr(charset, kLongestCharset).find('?');
  if (encoding < charset || encoding == charset || encoding + 2 >= header.size()) return {};
  const char kind = static_cast<char>(header[encoding + 1] | 0x20);
  if ((kind != 'b' && kind != 'q') || header[encoding + 2] != '?') return {};
  const std::size_t text = encoding + 3;
  // The next "=?" limits the search for the end of an incomplete word. The equals sign in "w6Q=?=" belongs to
  // the text.
  const std::size_t next = std::min(header.find("=?", text), header.size());
  const bool ownEnd = header.substr(next, 3) == "=?=";
  const std::size_t end = header.substr(0, next + (ownEnd ? 3 : 1)).find("?=", text);
  if (end == std::string_view::npos) return {};

  EncodedWord word;
  word.Charset = header.substr(charset, encoding - charset);
  if (word.Charset.find_first_of(" \t\r\n=") != std::string::npos) return {};
  word.Charset.resize(std::min(word.Charset.size(), word.Charset.find('*')));
  for (char& c : word.Charset) c = g_ascii_tolower(c);
  word.Base64 = kind == 'b';
  word.Text = header.substr(text, end - text);
  word.End = end + 2;
  return word;
}

void AppendQ(std::string& bytes, std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool escaped = text[i] == '=' && i + 2 < text.size() && g_ascii_isxdigit(text[i + 1]) &&
                         g_ascii_isxdigit(text[i + 2]);
    if (escaped) {
      bytes += static_cast<char>(g_ascii_xdigit_value(text[i + 1]) * 16 + g_ascii_xdigit_value(text[i + 2]));
      i += 2;
    } else {
      bytes += text[i] == '_' ? ' ' : text[i];
    }
  }
}

}  // namespace

std::string UnfoldHeader(std::string_view raw) {
  std::string line;
  line.reserve(raw.size());
  for (std::size_t i = 0; i < raw.size(); ++i) {
    if (raw[i] != '\r' && raw[i] != '\n') {
      line += raw[i];
      continue;
    }
    while (i + 1 < raw.size() && (raw[i + 1] == '\r' || raw[i + 1] == '\n')) ++i;
    bool tab = false;
    while (i + 1 < raw.size() && raw[i + 1] == '\t') {
      tab = true;
      ++i;
    }
    if (!tab) continue;
    while (!line.empty() && line.back() == '\t') line.pop_back();
    const bool blankBeside =
        (!line.empty() && line.back() == ' ') || (i + 1 < raw.size() && raw[i + 1] == ' ');
    if (!blankBeside) line += ' ';
  }
  const std::size_t first = line.find_first_not_of(kBlanks);
  if (first == std::string::npos) return {};
  return line.substr(first, line.find_last_not_of(kBlanks) - first + 1);
}

String DecodeHeader(std::string_view raw, std::string_view likelyCharset) {
  const std::string line = UnfoldHeader(raw);
  String text;
  std::size_t plainStart = 0;
  std::size_t search = 0;
  while (true) {
    const std::size_t start = line.find("=?", search);
    if (start == std::string::npos) break;
    std::optional<EncodedWord> word = ReadEncodedWord(line, start);
    if (!word) {
      search = start + 2;
      continue;
    }
    text += GuessText(std::string_view(line).substr(plainStart, start - plainStart), likelyCharset);

    // Decodes the adjacent words of one charset that begin here. Blanks between them are removed.
    std::string charset = word->Charset;
    std::string bytes;
    Base64Decoder base64;
    while (word) {
      if (word->Charset != charset) {
        base64.Finish(bytes);
        text += DecodeText(bytes, charset);
        bytes.clear();
        charset = word->Charset;
      }
      if (word->Base64) {
        base64.Append(bytes, word->Text);
        if (word->Text.ends_with('=')) base64.Finish(bytes);
      } else {
        base64.Finish(bytes);
        AppendQ(bytes, word->Text);
      }
      plainStart = word->End;
      const std::size_t next = std::min(line.size(), line.find_first_not_of(kBlanks, word->End));
      word = line.compare(next, 2, "=?") == 0 ? ReadEncodedWord(line, next) : std::nullopt;
    }
    base64.Finish(bytes);
    text += DecodeText(bytes, charset);
    search = plainStart;
  }
  return text += GuessText(std::string_view(line).substr(plainStart), likelyCharset);
}

}  // namespace Mime
