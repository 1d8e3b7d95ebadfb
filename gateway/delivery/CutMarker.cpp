#include "gateway/delivery/CutMarker.h"

#include "gateway/delivery/Attribution.h"
#include "gateway/notices/CutMarkerText.h"
#include "mime/MailCharacters.h"
#include "platform/Failure.h"

namespace Gateway {

using namespace Mime;

namespace {

// The component refuses a reply of more characters. An attribution, quote signs and blank lines in front of
// the marker are extra.
constexpr std::size_t kLongestReply = 32767;
constexpr std::size_t kLongestAttribution = 16384;

// Two words of the marker with more line ends between them are not wrapped.
constexpr int kMostLineEnds = 2;

std::size_t SkipInvisible(StringView text, std::size_t at) {
  while (at < text.size() && IsInvisible(text[at])) ++at;
  return at;
}

// What the marker's line may also hold: quote signs, and the asterisks and underscores of bold text.
bool IsFrame(char16_t c) {
  return IsBlank(c) || IsInvisible(c) || IsQuoteSign(c) || c == u'*' || c == u'_';
}

std::size_t LineBegin(StringView text, std::size_t at) {
  while (at > 0 && !IsLineEnd(text[at - 1])) --at;
  return at;
}

bool FillsItsLines(StringView text, std::size_t begin, std::size_t end) {
  const StringView before = text.substr(LineBegin(text, begin), begin - LineBegin(text, begin));
  while (end < text.size() && IsFrame(text[end])) ++end;
  return std::all_of(before.begin(), before.end(), IsFrame) && (end == text.size() || IsLineEnd(text[end]));
}

// Skips what separates two words: blanks, and line ends with quote signs after them. Returns false if nothing
// separates them.
bool MatchGap(StringView text, std::size_t& at) {
  bool parted = false;
  int lineEnds = 0;
  for (; at < text.size(); ++at) {
    const char16_t c = text[at];
    if (IsLineEnd(c)) {
      if ((c != u'\n' || text[at - 1] != u'\r') && ++lineEnds > kMostLineEnds) return false;
    } else if (!(IsBlank(c) || IsInvisible(c) || (lineEnds > 0 && IsQuoteSign(c)))) {
      return parted;
    }
    parted =
        parted || IsLineEnd(c) || IsBlank(c) || c == u'\u200B';  // a zero-width space separates words, too
  }
  return parted;
}

}  // namespace

const std::optional<String>& CutMarker::Text() {
  if (text_) return text_;
  try {
    text_ = LoadCutMarkerText();
    TakeSteps();
  } catch (const Platform::Failure&) {
    text_.reset();
  }
  return text_;
}

String CutMarker::OriginalText() {
  return Text().value_or(String());
}

void CutMarker::TakeSteps() {
  steps_.clear();
  bool gap = false;
  for (const char16_t c : *text_) {
    if (IsInvisible(c)) continue;
    if (IsBlank(c) || IsLineEnd(c)) {
      gap = !steps_.empty();
      continue;
    }
    if (gap) steps_.push_back({Step::Gap});
    gap = false;
    if (!IsDash(c)) {
      steps_.push_back({Step::Letter, c});
    } else if (!steps_.empty() && steps_.back().Kind == Step::Dashes) {
      ++steps_.back().Count;
    } else {
      steps_.push_back({Step::Dashes, 0, 1});
    }
  }
}

// Hyphens match in the same number; at either end of the marker there may be more. If dashes replace them,
// the number depends on the program: one dash for each hyphen, or for two or three of them.
bool CutMarker::MatchDashes(StringView text, std::size_t& at, const Step& step, Place& place) const {
  std::size_t fewest = 0, most = 0;
  for (std::size_t i = at; i < text.size() && (IsDash(text[i]) || IsInvisible(text[i])); ++i) {
    if (IsInvisible(text[i])) continue;
    const bool wide = text[i] == u'\u2014' || text[i] == u'\u2015';
    ++fewest;
    most += wide ? 3u : text[i] == u'\u2013' ? 2u : 1u;
    at = i + 1;
  }
  if (fewest == 0) return false;
  const bool atEdge = &step == &steps_.front() || &step == &steps_.back();
  if (most >= step.Count && (fewest <= step.Count || atEdge)) return true;
  place.Alone = true;
  return most > fewest;
}

std::optional<CutMarker::Place> CutMarker::MatchAt(StringView text, std::size_t begin) const {
  Place place{begin, begin};
  std::size_t& at = place.End;
  for (const Step& step : steps_) {
    bool matches = false;
    switch (step.Kind) {
      case Step::Gap:
        matches = MatchGap(text, at);
        break;
      case Step::Dashes:
        matches = MatchDashes(text, at, step, place);
        break;
      case Step::Letter:
        at = SkipInvisible(text, at);
        matches = at < text.size() && text[at] == step.Character;
        ++at;
        break;
    }
    if (!matches) return {};
  }
  if (place.Alone && !FillsItsLines(text, place.Begin, place.End)) return {};
  return place;
}

// The first marker. If it is part of longer runs of hyphens, as the component accepts, it includes them. Only
// the start of a run of dashes is tried, which limits the comparisons for each character to the length of the
// marker.
std::optional<CutMarker::Place> CutMarker::Find(StringView text) const {
  const std::size_t exact = text.find(*text_);
  const std::size_t end = steps_.empty() ? 0 : std::min(exact, text.size());
  const bool dashesFirst = !steps_.empty() && steps_.front().Kind == Step::Dashes;
  const char16_t first = steps_.empty() ? u'\0' : steps_.front().Character;
  bool behindDash = false;
  for (std::size_t i = 0; i < end; ++i) {
    const char16_t c = text[i];
    const bool dash = IsDash(c);
    if (dashesFirst ? dash && !behindDash : c == first) {
      if (const auto found = MatchAt(text, i)) return found;
    }
    behindDash = dash || (behindDash && IsInvisible(c));
  }
  if (exact == StringView::npos) return {};
  return Place{exact, exact + text_->size()};
}

std::size_t CutMarker::Repair(String& body) {
  if (!Text()) return String::npos;
  const StringView searched = StringView(body).substr(0, kLongestReply + kLongestAttribution);
  const auto found = Find(searched);
  if (!found) return String::npos;
  std::size_t above = found->Begin;
  while (above > 0 && IsFrame(body[above - 1])) --above;
  std::size_t own = EndOfOwnText(searched.substr(0, above));
  // Quote signs after the writer's own text on the marker's line belong to that text.
  if (own == above && above > 0 && !IsLineEnd(body[above - 1])) own = found->Begin;
  body.replace(own, found->End - own, *text_);
  return own;
}

}  // namespace Gateway
