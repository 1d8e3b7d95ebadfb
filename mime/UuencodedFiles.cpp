#include "mime/UuencodedFiles.h"

#include <algorithm>

namespace Mime {
namespace {

using Platform::StringView;

constexpr StringView kBegin = u"begin ";

// The line at position without its line end; next is set to the position of the next line.
StringView LineAt(StringView text, std::size_t position, std::size_t& next) {
  const std::size_t end = std::min(text.find(u'\n', position), text.size());
  next = std::min(end + 1, text.size());
  StringView line = text.substr(position, end - position);
  if (line.ends_with(u'\r')) line.remove_suffix(1);
  return line;
}

// "begin", the file's access rights in three or four octal digits, and its name.
bool IsBegin(StringView line) {
  if (!line.starts_with(kBegin)) return false;
  const StringView rights = line.substr(kBegin.size(), line.substr(kBegin.size()).find(u' '));
  return rights.size() >= 3 && rights.size() <= 4 && line.size() > kBegin.size() + rights.size() + 1 &&
         std::ranges::all_of(rights, [](char16_t c) { return c >= u'0' && c <= u'7'; });
}

// A line of data: its number of bytes, and four characters for each three of them. Some programs add a check
// character, and others remove blanks at the end.
bool IsData(StringView line) {
  constexpr char16_t kFirst = u' ', kLast = u'`';
  if (line.empty()) return true;
  if (std::ranges::any_of(line, [](char16_t c) { return c < kFirst || c > kLast; })) return false;
  const std::size_t bytes = static_cast<std::size_t>(line[0] - kFirst) & 63;
  const std::size_t length = 1 + (bytes + 2) / 3 * 4;
  constexpr std::size_t kLostBlanks = 4;
  return line.size() <= length + 1 && line.size() + kLostBlanks >= length;
}

// The position after the file whose first line ends before position; 0 if there is no complete file.
std::size_t EndOfFile(StringView text, std::size_t position) {
  while (position < text.size()) {
    const StringView line = LineAt(text, position, position);
    if (line == u"end") return position;
    if (!IsData(line)) return 0;
  }
  return 0;
}

}  // namespace

void RemoveUuencodedFiles(String& text) {
  std::size_t kept = 0;    // the kept text ends here, in the same string
  std::size_t copied = 0;  // everything before this position is processed
  for (std::size_t search = text.find(kBegin); search != String::npos; search = text.find(kBegin, search)) {
    std::size_t next = 0;
    const bool lineStart = search == 0 || text[search - 1] == u'\n';
    const bool begins = lineStart && IsBegin(LineAt(text, search, next));
    const std::size_t end = begins ? EndOfFile(text, next) : 0;
    if (end == 0) {
      search += kBegin.size();
      continue;
    }
    if (kept != copied)
      std::copy(text.begin() + static_cast<std::ptrdiff_t>(copied),
                text.begin() + static_cast<std::ptrdiff_t>(search),
                text.begin() + static_cast<std::ptrdiff_t>(kept));
    kept += search - copied;
    copied = search = end;
  }
  text.erase(kept, copied - kept);
}

}  // namespace Mime
