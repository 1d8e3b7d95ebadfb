#include "mime/EnrichedText.h"

#include <algorithm>

namespace Mime {
namespace {

constexpr std::size_t kLongestCommand = 62;  // RFC 1896: 60 letters, and the brackets

// The name of the command at the start of the text, in lower case and with the slash of an end; empty if
// there is no command.
String CommandAt(StringView text) {
  const std::size_t end = text.substr(0, kLongestCommand).find(u'>');
  if (end == StringView::npos || end < 2) return {};
  return Platform::FoldCase(text.substr(1, end - 1));
}

}  // namespace

String EnrichedToText(StringView enriched) {
  String text;
  text.reserve(enriched.size());
  int parameters = 0;
  int unfilled = 0;
  const auto change = [](int& depth, int by) { depth = std::max(0, depth + by); };
  for (std::size_t i = 0; i < enriched.size(); ++i) {
    const char16_t c = enriched[i];
    if (c == u'\r') continue;
    if (c == u'<' && enriched.substr(i, 2) != u"<<") {
      const String command = CommandAt(enriched.substr(i));
      if (command == u"param") change(parameters, 1);
      if (command == u"/param") change(parameters, -1);
      if (command == u"nofill") change(unfilled, 1);
      if (command == u"/nofill") change(unfilled, -1);
      if (!command.empty()) {
        i += command.size() + 1;
        continue;
      }
    }
    if (c == u'<' && enriched.substr(i, 2) == u"<<") ++i;
    if (parameters > 0) continue;
    if (c != u'\n' || unfilled > 0) {
      text += c;
      continue;
    }
    std::size_t lineEnds = 1;
    for (; i + 1 < enriched.size() && (enriched[i + 1] == u'\n' || enriched[i + 1] == u'\r'); ++i)
      if (enriched[i + 1] == u'\n') ++lineEnds;
    lineEnds == 1 ? text.append(1, u' ') : text.append(lineEnds - 1, u'\n');
  }
  return text;
}

}  // namespace Mime
