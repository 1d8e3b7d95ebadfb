#include "mime/FlowedText.h"

#include <algorithm>

namespace Mime {
namespace {

// Removes the first line from the text and returns it without its line end.
StringView TakeLine(StringView& text) {
  const std::size_t end = Platform::FindEither(text, u'\r', u'\n');
  const StringView line = text.substr(0, end);
  text.remove_prefix(end);
  text.remove_prefix(text.starts_with(u"\r\n") ? 2 : std::min<std::size_t>(text.size(), 1));
  return line;
}

}  // namespace

String UnflowText(StringView text, bool deleteSpace) {
  String result;
  result.reserve(text.size());
  const bool endsInLine = !text.empty() && text.find_last_of(u"\r\n") == text.size() - 1;
  bool open = false;  // the previous line continues in this one if the depth is the same
  std::size_t openDepth = 0;
  bool first = true;
  while (!text.empty()) {
    StringView line = TakeLine(text);
    std::size_t depth = line.find_first_not_of(u'>');
    if (depth == StringView::npos) depth = line.size();
    line.remove_prefix(depth);
    if (line.starts_with(u' ')) line.remove_prefix(1);

    const bool signature = line == u"-- ";
    const bool goesOn = open && depth == openDepth && !signature;
    if (!goesOn) {
      if (!first) result += u'\n';
      result.append(depth, u'>');
      if (depth > 0 && !line.empty()) result += u' ';
    }
    first = false;
    open = line.ends_with(u' ') && !signature;
    openDepth = depth;
    if (open && deleteSpace) line.remove_suffix(1);
    result += line;
  }
  if (endsInLine) result += u'\n';
  return result;
}

}  // namespace Mime
