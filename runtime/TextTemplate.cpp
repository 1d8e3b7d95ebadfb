#include "runtime/TextTemplate.h"

namespace Runtime {

bool IsTemplate(StringView text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != u'%') continue;
    ++i;
    if (i == text.size() || !(text[i] == u'%' || (text[i] >= u'1' && text[i] <= u'9'))) return false;
  }
  return true;
}

String Expand(StringView text, std::span<const String> arguments) {
  String result;
  result.reserve(text.size());
  std::size_t copied = 0;
  for (std::size_t i = text.find(u'%'); i != StringView::npos && i + 1 < text.size();
       i = text.find(u'%', copied)) {
    result += text.substr(copied, i - copied);
    const char16_t mark = text[++i];
    copied = i + 1;
    if (mark < u'1' || mark > u'9') {
      result += mark;
      continue;
    }
    const std::size_t position = mark - u'1';
    if (position < arguments.size() && !arguments[position].empty()) {
      result += arguments[position];
    } else if (i >= 2 && text[i - 2] == u' ' && result.ends_with(u' ')) {
      result.pop_back();
    }
  }
  return result += text.substr(copied);
}

}  // namespace Runtime
