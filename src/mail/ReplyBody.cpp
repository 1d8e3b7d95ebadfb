#include "src/mail/ReplyBody.h"
#include "platform/StoredNames.h"

#include <cstdint>
#include <limits>

#include "platform/Failure.h"
#include "src/services/modMain.h"

namespace TvEmailServices {
namespace {

constexpr std::size_t kLastPosition = std::numeric_limits<std::int16_t>::max();

// The first position from begin on, counted from 0, for which holds gives 1 and not 0; end if there is none.
// It looks at blocks without a branch inside, which lets the compiler test many characters at once.
template <class Test>
std::size_t FindFirst(std::size_t begin, std::size_t end, Test holds) {
  constexpr std::size_t kBlock = 64;
  for (; begin + kBlock <= end; begin += kBlock) {
    char16_t any = 0;
    for (std::size_t i = 0; i < kBlock; ++i) any = static_cast<char16_t>(any | holds(begin + i));
    if (any) break;
  }
  while (begin < end && !holds(begin)) ++begin;
  return begin;
}

// Where the marker begins, or npos. Only as much is searched as a 16-bit position can name.
std::size_t FindMarker(StringView body, StringView marker) {
  if (marker.empty()) return 0;
  const StringView searched = body.substr(0, kLastPosition + marker.size() - 1);
  if (searched.size() < marker.size()) return StringView::npos;
  const char16_t* const text = searched.data();
  const std::size_t last = marker.size() - 1;
  const std::size_t end = searched.size() - last;
  const char16_t firstCharacter = marker.front();
  const char16_t lastCharacter = marker.back();
  const auto mayBegin = [=](std::size_t i) {
    return static_cast<char16_t>((text[i] == firstCharacter) & (text[i + last] == lastCharacter));
  };
  for (std::size_t i = FindFirst(0, end, mayBegin); i < end; i = FindFirst(i + 1, end, mayBegin)) {
    if (searched.substr(i, marker.size()) == marker) return i;
  }
  return StringView::npos;
}

void CutAtMarker(String& body, StringView marker) {
  const std::size_t found = FindMarker(body, marker);
  if (found != StringView::npos) {
    body.erase(found);
  } else if (body.size() >= kLastPosition) {
    // Whether there is a marker further on or none at all: either number is too large. One less than the
    // largest is the limit, since the position behind the last character has to be a number, too.
    Raise(FailureNumber::Overflow);
  }
}

// The text with the missing half put to every bare CR and bare LF. Text without any, the usual case, is moved
// out of body, which spares a copy; all other text stays in body as it is.
String TakeWithWholeLineEnds(String& body) {
  const char16_t* const text = body.data();  // ends on a NUL, which is no line end
  const std::size_t length = body.size();
  // Between two neighbours a half is missing if one of them is its own half of a pair and the other isn't.
  const auto halfMissing = [=](std::size_t i) {
    return static_cast<char16_t>((text[i] == u'\r') ^ (text[i + 1] == u'\n'));
  };
  if (length == 0) return {};
  const bool bareBegin = text[0] == u'\n';
  std::size_t split = FindFirst(0, length, halfMissing);
  if (!bareBegin && split == length) return std::move(body);

  String complete;
  complete.reserve(length + length / 16 + 2);
  if (bareBegin) complete += u'\r';
  std::size_t begin = 0;
  for (; split < length; split = FindFirst(begin, length, halfMissing)) {
    complete.append(text + begin, split + 1 - begin);
    complete += text[split] == u'\r' ? u'\n' : u'\r';
    begin = split + 1;
  }
  complete.append(text + begin, length - begin);
  return complete;
}

// The blanks of both ends, once, and then the line ends of the end; blanks that these uncover stay.
void TakeOffEnds(String& body) {
  const std::size_t blanks = std::min(body.find_first_not_of(u' '), body.size());
  body.erase(body.find_last_not_of(u' ') + 1);
  if (body.size() > blanks + kLastPosition) Raise(FailureNumber::Overflow);
  body.erase(body.find_last_not_of(u"\r\n") + 1);
  body.erase(0, blanks);
}

}  // namespace

bool ParseReplyBody(String& body, String& errorText) {
  try {
    CutAtMarker(body, LoadTVCOMResourceString(TextNumber::kCutMarker));
    String reply = TakeWithWholeLineEnds(body);  // what was moved is short enough not to be refused below
    TakeOffEnds(reply);
    body = std::move(reply);
    return true;
  } catch (...) {
    errorText = CurrentFailure().Description();
    return false;
  }
}

}  // namespace TvEmailServices
