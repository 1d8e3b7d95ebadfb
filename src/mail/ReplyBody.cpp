#include "src/mail/ReplyBody.h"

#include <algorithm>

#include "platform/Failure.h"
#include "platform/StoredNames.h"
#include "src/services/modMain.h"

namespace TvEmailServices {
namespace {

constexpr std::size_t kLastPosition = 32767;  // positions and lengths are signed 16-bit numbers
constexpr StringView kLineEnd = u"\r\n";

// The position of the marker; the size of the body if there is none. Positions from kLastPosition on are not
// searched, as each of them is refused.
std::size_t FindMarker(StringView body, StringView marker) {
  std::size_t at = 0;
  while (at < std::min(body.size(), kLastPosition) && !body.substr(at).starts_with(marker)) {
    at = FindEither(body, marker.front(), marker.front(), at + 1);
  }
  return at;
}

// The text with CR LF for each line end, which is CR LF, a single CR or a single LF.
String WithWholeLineEnds(StringView text) {
  String whole;
  whole.reserve(text.size() + text.size() / 16);
  for (std::size_t begin = 0;;) {
    const std::size_t end = FindEither(text, u'\r', u'\n', begin);
    whole += text.substr(begin, end - begin);
    if (end == text.size()) return whole;
    whole += kLineEnd;
    begin = end + (text.substr(end).starts_with(kLineEnd) ? 2 : 1);
  }
}

}  // namespace

bool ParseReplyBody(String& body, String& errorText) {
  try {
    const std::size_t cut = FindMarker(body, LoadTVCOMResourceString(TextNumber::kCutMarker));
    if (cut >= kLastPosition) Raise(FailureNumber::Overflow);
    body.resize(cut);
    String reply = Trim(WithWholeLineEnds(body));
    if (reply.size() > kLastPosition) Raise(FailureNumber::Overflow);
    reply.erase(reply.find_last_not_of(kLineEnd) + 1);
    body = std::move(reply);
    return true;
  } catch (...) {
    errorText = CurrentFailure().Description();
    return false;
  }
}

}  // namespace TvEmailServices
