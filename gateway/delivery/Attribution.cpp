#include "gateway/delivery/Attribution.h"

#include <algorithm>
#include <deque>

#include "gateway/delivery/AttributionLanguages.h"
#include "gateway/delivery/AttributionSentence.h"
#include "mime/MailCharacters.h"

namespace Gateway {

using namespace Mime;

namespace {

// Mail programs write shorter lines, sentences and blocks of header lines.
constexpr std::size_t kLongestLine = 1000;
constexpr std::size_t kMostSentenceLines = 4;
constexpr std::size_t kMostLines = 80;

struct Line {
  std::size_t Begin;  // position in the text
  String Text;        // without quote signs and with single blanks; empty for a blank line
};

String WithoutQuoteSigns(StringView line) {
  String text;
  bool quoted = true;
  for (const char16_t c : line) {
    if (IsInvisible(c) || (quoted && (IsQuoteSign(c) || IsBlank(c)))) continue;
    quoted = false;
    if (!IsBlank(c)) {
      text += c;
    } else if (!text.ends_with(u' ')) {
      text += u' ';
    }
  }
  if (text.ends_with(u' ')) text.pop_back();
  return text;
}

// The last lines of a text, read on demand. Line 0 is the last one. Consecutive blank lines count as one.
class LastLines {
 public:
  explicit LastLines(StringView text) : rest_(text) {}

  bool Has(std::size_t at) {
    while (lines_.size() <= at + 1 && lines_.size() < kMostLines && !rest_.empty()) ReadOne();
    return at < lines_.size();
  }
  const Line& operator[](std::size_t at) const { return lines_[at]; }
  bool HasBlank(std::size_t at) { return Has(at) && lines_[at].Text.empty(); }

 private:
  void ReadOne() {
    std::size_t end = rest_.size();
    if (IsLineEnd(rest_[end - 1])) --end;
    if (end > 0 && rest_.substr(end - 1).starts_with(u"\r\n")) --end;
    std::size_t begin = end;
    while (begin > 0 && !IsLineEnd(rest_[begin - 1])) --begin;
    String text = WithoutQuoteSigns(rest_.substr(begin, end - begin));
    if (text.empty() && !lines_.empty() && lines_.back().Text.empty()) {
      lines_.back().Begin = begin;
    } else {
      lines_.push_back({begin, std::move(text)});
    }
    rest_ = rest_.substr(0, begin);
  }

  StringView rest_;
  std::deque<Line> lines_;  // references to lines stay valid while more are read
};

// The number of lines, from at upwards, that form a sentence that introduces a quote; the smallest such
// number.
std::size_t SentenceLength(LastLines& lines, std::size_t at) {
  for (const SentenceBegin begin : {SentenceBegin::Sure, SentenceBegin::Name}) {
    String sentence;
    for (std::size_t i = at; lines.Has(i) && i < at + kMostSentenceLines; ++i) {
      const String& text = lines[i].Text;
      const bool ended = i > at && !text.empty() && IsOneOf(text.back(), u".!?");
      if (text.empty() || ended || text.size() > kLongestLine) break;
      if (!sentence.empty()) sentence.insert(0, u" ");
      sentence.insert(0, text);
      // Without a time, the first of several lines could be the writer's own: "On 2 Nov 2026 I come".
      const bool sure = i == at || begin == SentenceBegin::Name || HoldsTime(sentence);
      if (sure && IsAttributionSentence(sentence, begin)) return i + 1 - at;
    }
  }
  return 0;
}

bool IsAmong(StringView alternatives, StringView word) {
  while (!alternatives.empty()) {
    if (Platform::EqualsIgnoreCase(TakeAlternative(alternatives), word)) return true;
  }
  return false;
}

// The name of a header line, without the asterisks of bold text; empty for any other line.
StringView HeaderName(StringView text) {
  constexpr std::size_t kLongestName = 30;
  const auto colon = text.substr(0, kLongestName).find_first_of(u":\uFF1A");
  if (colon == StringView::npos) return {};
  StringView name = text.substr(0, colon);
  name = name.substr(0, name.find_last_not_of(u" *") + 1);
  return name.substr(std::min(name.find_first_not_of(u'*'), name.size()));
}

constexpr unsigned kFrom = 1, kDate = 2, kTo = 4, kSubject = 8, kMore = 16;

unsigned KindOf(StringView name, const AttributionLanguage& language) {
  return IsAmong(language.From, name)      ? kFrom
         : IsAmong(language.Date, name)    ? kDate
         : IsAmong(language.To, name)      ? kTo
         : IsAmong(language.Subject, name) ? kSubject
         : IsAmong(language.More, name)    ? kMore
                                           : 0;
}

struct HeaderBlock {
  std::size_t Length = 0;  // in lines
  unsigned Names = 0;      // the kinds that were found
  bool Dated = false;      // a date is the value of one of them
};

// True if the line above a line without a name is so long that its value was continued there.
bool IsWrapped(StringView above, StringView text) {
  constexpr std::size_t kNarrowest = 65, kWidest = 80;
  return above.size() <= kWidest && above.size() + 1 + std::min(text.find(u' '), text.size()) > kNarrowest;
}

// The header lines of one language from at on, upwards. A value that is too long for its line is continued on
// lines without a name; a blank line may stand between two header lines. A name that comes a second time is
// not part of the block. Without colons, a line's first word is its name.
HeaderBlock HeaderLines(LastLines& lines, std::size_t at, const AttributionLanguage& language, bool colons) {
  constexpr std::size_t kMostContinuations = 20;
  HeaderBlock block;
  std::size_t continuations = 0;
  for (std::size_t i = at; lines.Has(i) && continuations <= kMostContinuations; ++i) {
    const StringView text = lines[i].Text;
    const unsigned kind = KindOf(colons ? HeaderName(text) : text.substr(0, text.find(u' ')), language);
    if (kind != 0) {
      if (kind != kMore && (block.Names & kind) != 0) break;
      block = {i + 1 - at, block.Names | kind, block.Dated || (kind == kDate && HoldsDate(text))};
      continuations = 0;
    } else if (text.empty()) {
      if (continuations > 0) break;
    } else {
      if (!lines.Has(i + 1) || !IsWrapped(lines[i + 1].Text, text)) break;
      ++continuations;
    }
  }
  return block;
}

// True for a separator: between dashes, a heading of the table. Above header lines also a text with a colon
// at its end, such as "Alice wrote:", between dashes, and underscores or dashes alone.
bool IsHeading(StringView text, bool aboveHeaders) {
  constexpr std::size_t kShortestRule = 8;
  const auto isRule = [](char16_t c) { return c == u'_' || IsDash(c); };
  if (text.size() > kLongestLine) return false;
  if (std::all_of(text.begin(), text.end(), isRule)) return aboveHeaders && text.size() >= kShortestRule;
  std::size_t dashes[2] = {0, 0};
  for (; IsDash(text.front()); ++dashes[0]) text.remove_prefix(1);
  for (; IsDash(text.back()); ++dashes[1]) text.remove_suffix(1);
  if (dashes[0] == 0 || dashes[1] == 0) return false;
  const String inner = Platform::Trim(text);
  if (aboveHeaders && inner.ends_with(u':')) return true;
  const auto languages = AttributionLanguages();
  return std::any_of(languages.begin(), languages.end(),
                     [&](const AttributionLanguage& language) { return IsAmong(language.Headings, inner); });
}

// The index after the heading above at; at if there is none.
std::size_t PassHeading(LastLines& lines, std::size_t at, bool aboveHeaders) {
  const std::size_t heading = at + (lines.HasBlank(at) ? 1 : 0);
  return lines.Has(heading) && IsHeading(lines[heading].Text, aboveHeaders) ? heading + 1 : at;
}

// False if no line at `at` belongs to header lines of any language, as in most mails.
bool MayEndHeaders(LastLines& lines, std::size_t at) {
  if (!lines.Has(at)) return false;
  const StringView text = lines[at].Text;
  return text.empty() || IsHeaderName(HeaderName(text)) || IsHeaderName(text.substr(0, text.find(u' '))) ||
         (lines.Has(at + 1) && IsWrapped(lines[at + 1].Text, text));
}

// The index after the header lines at `at` and their heading; at if there are none. Without a heading of the
// table they need colons, a date and a subject, since the writer could have written other ones.
std::size_t PassHeaders(LastLines& lines, std::size_t at) {
  if (!MayEndHeaders(lines, at)) return at;
  for (const bool colons : {true, false}) {
    for (const AttributionLanguage& language : AttributionLanguages()) {
      const HeaderBlock block = HeaderLines(lines, at, language, colons);
      if (!(block.Names & kFrom) || !(block.Names & (kDate | kTo | kSubject))) continue;
      const std::size_t end = at + block.Length;
      if (const std::size_t behind = PassHeading(lines, end, false); behind > end) return behind;
      const bool certain = colons && block.Dated && (block.Names & kSubject);
      if (certain) return PassHeading(lines, end, true);
    }
  }
  return at;
}

}  // namespace

std::size_t EndOfOwnText(StringView text) {
  LastLines lines(text);
  std::size_t at = lines.HasBlank(0) ? 1 : 0;
  const std::size_t sentence = SentenceLength(lines, at);
  const std::size_t behind = sentence > 0 ? at + sentence : PassHeaders(lines, at);
  at = PassHeading(lines, behind, false);
  if (lines.HasBlank(at)) ++at;
  return at == 0 ? text.size() : lines[at - 1].Begin;
}

}  // namespace Gateway
