#include "gateway/notices/NoticeSubject.h"

#include <algorithm>

#include "mime/MailCharacters.h"

namespace Gateway {
namespace {

// Together with the markers, a number and some "Re:" in front less than the 255 characters that every program
// keeps.
constexpr std::size_t kLongestTitle = 120;
constexpr std::size_t kLongestName = 50;

constexpr StringView kProjectMarker = u"(Ostrand Talvane Project ";
constexpr StringView kDiscussionMarker = u"Ostrand Talvane Discussion ";

// A character that belongs to the one before it: an accent, a joiner or a variation selector.
bool Continues(char16_t c) {
  return Mime::IsInvisible(c) || (c >= u'\u0300' && c <= u'\u036F') || Platform::IsLowSurrogate(c);
}

String Shortened(StringView text, std::size_t longest) {
  if (text.size() <= longest) return String(text);
  std::size_t end = longest - 1;
  while (end > 0 && (Continues(text[end]) || text[end - 1] == u'\u200D')) --end;
  if (end == 0) end = longest - 1;  // one character with a hundred accents
  return Platform::Trim(text.substr(0, end)) + u'\u2026';
}

// U+202A to U+202E and U+2066 to U+2069.
bool TurnsDirection(char16_t c) {
  return (c >= u'\u202A' && c <= u'\u202E') || (c >= u'\u2066' && c <= u'\u2069');
}

void Break(String& text, StringView marker) {
  const auto isDash = [](char16_t c) { return c == u' ' || Mime::IsDash(c); };
  while (!marker.empty() && isDash(marker.front())) marker.remove_prefix(1);
  while (!marker.empty() && isDash(marker.back())) marker.remove_suffix(1);
  if (marker.find(u' ') == StringView::npos) return;
  for (std::size_t at = text.find(marker); at != String::npos; at = text.find(marker, at)) {
    const auto begin = text.begin() + static_cast<std::ptrdiff_t>(at);
    std::replace(begin, begin + static_cast<std::ptrdiff_t>(marker.size()), u' ', u'-');
  }
}

}  // namespace

String WithoutMarkers(StringView text, StringView cutMarker) {
  String line;
  for (const char16_t c : text) {
    if (TurnsDirection(c)) continue;
    const bool blank = c == u' ' || c == u'\u00A0' || Platform::IsControl(c) || Mime::IsLineEnd(c);
    if (!blank) {
      line += c;
    } else if (!line.empty() && line.back() != u' ') {
      line += u' ';
    }
  }
  if (line.ends_with(u' ')) line.pop_back();
  for (const StringView marker : {kProjectMarker, kDiscussionMarker, cutMarker}) Break(line, marker);
  return line;
}

std::vector<String> NoticeSubject(StringView title, StringView projectName, std::int32_t discussion,
                                  StringView cutMarker) {
  String start = Shortened(WithoutMarkers(title, cutMarker), kLongestTitle);
  std::vector<String> pieces;
  String blank;
  if (!start.empty()) {
    pieces.push_back(std::move(start));
    blank = u' ';
  }
  pieces.push_back(blank + String(kProjectMarker));
  pieces.push_back(Shortened(WithoutMarkers(projectName, cutMarker), kLongestName));
  pieces.push_back(u", " + String(kDiscussionMarker) + Platform::FromUtf8(std::to_string(discussion)) + u')');
  return pieces;
}

}  // namespace Gateway
