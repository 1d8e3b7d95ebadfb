#include "src/mail/ReplyBody.h"

#include <cstdint>
#include <limits>

#include "platform/Failure.h"
#include "platform/StoredNames.h"
#include "src/services/modMain.h"

namespace TvEmailServices {
namespace {

// Positions and lengths are 16-bit numbers, also the position after the last character of the body.
constexpr std::size_t kLastPosition = std::numeric_limits<std::int16_t>::max();

// The first position from begin on for which holds gives true; end if there is none. A block is tested
// without a branch, so that the compiler can test many characters at once.
template <class Test>
std::size_t FindFirst(std::size_t begin, std::size_t end, Test holds) {
  constexpr std::size_t kBlock = 64;
  for (char16_t any = 0; begin + kBlock <= end; begin += kBlock) {
    for (std::size_t i = begin; i < begin + kBlock; ++i) any = static_cast<char16_t>(any | holds(i));
    if (any) break;
  }
  while (begin < end && !holds(begin)) ++begin;
  return begin;
}

// The position of the marker, or npos.
std::size_t Find(StringView text, StringView marker) {
  if (marker.empty()) return 0;
  if (marker.size() > text.size()) return StringView::npos;
  const std::size_t last = marker.size() - 1, end = text.size() - last;
  const auto mayBegin = [text = text.data(), first = marker.front(), back = marker.back(),
                         last](std::size_t i) { return (text[i] == first) & (text[i + last] == back); };
  std::size_t at = FindFirst(0, end, mayBegin);
  while (at < end && text.substr(at, marker.size()) != marker) at = FindFirst(at + 1, end, mayBegin);
  return at < end ? at : StringView::npos;
}

// The text with each single CR and each single LF replaced by CR LF.
String WithWholeLineEnds(const String& text) {
  // True if a LF is missing after the character at i, or a CR before the next one. The character after the
  // last one is NUL.
  const auto halfMissing = [text = text.data()](std::size_t i) {
    return (text[i] == u'\r') != (text[i + 1] == u'\n');
  };
  String whole(text.starts_with(u'\n') ? u"\r" : u"");
  std::size_t begin = 0;
  while (true) {
    const std::size_t at = FindFirst(begin, text.size(), halfMissing);
    whole.append(text, begin, at + 1 - begin);
    if (at == text.size()) return whole;
    whole += text[at] == u'\r' ? u'\n' : u'\r';
    begin = at + 1;
  }
}

}  // namespace

bool ParseReplyBody(String& body, String& errorText) {
  try {
    const String marker = LoadTVCOMResourceString(TextNumber::kCutMarker);
    const auto cut = Find(StringView(body).substr(0, kLastPosition + marker.size() - 1), marker);
    if (cut != StringView::npos) body.resize(cut);
    if (body.size() >= kLastPosition) Raise(FailureNumber::Overflow);
    String reply = Trim(WithWholeLineEnds(body));
    if (reply.size() > kLastPosition) Raise(FailureNumber::Overflow);
    reply.erase(reply.find_last_not_of(u"\r\n") + 1);
    body = std::move(reply);
    return true;
  } catch (...) {
    errorText = CurrentFailure().Description();
    return false;
  }
}

}  // namespace TvEmailServices
