#include "mime/HardWraps.h"

#include <algorithm>

#include "mime/MailCharacters.h"

namespace Mime {
namespace {

// The lengths of a line that had no room for the next word.
constexpr std::size_t kNarrowest = 65, kWidest = 80;

// Blanks and line ends between two words.
struct Gap {
  std::size_t Length = 0;
  std::size_t LineEnds = 0;  // CR LF is one
};

bool IsGap(char16_t c) {
  return IsBlank(c) || IsLineEnd(c);
}

Gap GapAt(StringView text, std::size_t at) {
  Gap gap;
  for (std::size_t i = at; i < text.size() && IsGap(text[i]); ++i) {
    const bool secondOfPair = i > at && text[i] == u'\n' && text[i - 1] == u'\r';
    if (IsLineEnd(text[i]) && !secondOfPair) ++gap.LineEnds;
    ++gap.Length;
  }
  return gap;
}

// In Unicode characters, as programs count them.
std::size_t Width(StringView text) {
  const auto second =
      std::count_if(text.begin(), text.end(), [](char16_t c) { return (c & 0xFC00) == 0xDC00; });
  return text.size() - static_cast<std::size_t>(second);
}

// True if the word at next had no room on the line.
bool IsFull(StringView line, StringView next) {
  if (line.size() > 2 * kWidest || Width(line) > kWidest) return false;
  const auto word = std::find_if(next.begin(), next.end(), IsGap) - next.begin();
  return Width(line) + 1 + Width(next.substr(0, static_cast<std::size_t>(word))) > kNarrowest;
}

}  // namespace

bool MayBeWrapped(StringView text) {
  for (std::size_t begin = 0; begin < text.size();) {
    const auto lineEnd =
        std::find_if(text.begin() + static_cast<std::ptrdiff_t>(begin), text.end(), IsLineEnd);
    const auto end = static_cast<std::size_t>(lineEnd - text.begin());
    const Gap gap = GapAt(text, end);
    const std::size_t next = end + gap.Length;
    if (gap.LineEnds == 1 && next < text.size() && text[begin] != u'>' && text[next] != u'>' &&
        IsFull(text.substr(begin, end - begin), text.substr(next, 2 * kWidest)))
      return true;
    begin = std::max(next, end + 1);
  }
  return false;
}

String WithoutHardWraps(StringView text, StringView twin) {
  std::size_t at = GapAt(text, 0).Length, inTwin = GapAt(twin, 0).Length, lineBegin = at;
  String result(text.substr(0, at));
  result.reserve(text.size());
  while (at < text.size() && inTwin < twin.size()) {
    const Gap gap = GapAt(text, at), other = GapAt(twin, inTwin);
    if ((gap.Length == 0) != (other.Length == 0)) break;
    if (gap.Length == 0) {
      if (text[at] != twin[inTwin]) break;
      result += text[at++];
      ++inTwin;
      continue;
    }
    const std::size_t next = at + gap.Length;
    const bool wrapped = gap.LineEnds == 1 && other.LineEnds == 0 &&
                         IsFull(text.substr(lineBegin, at - lineBegin), text.substr(next, 2 * kWidest));
    result += wrapped ? twin.substr(inTwin, other.Length) : text.substr(at, gap.Length);
    if (gap.LineEnds > 0) lineBegin = next;
    at = next;
    inTwin += other.Length;
  }
  result += text.substr(at);
  return result;
}

}  // namespace Mime
