#include "gateway/notices/NoticeText.h"

#include <algorithm>

#include "mime/MailCharacters.h"

namespace Gateway {
namespace {

constexpr StringView kNoBreakSpace = u"&#160;";

bool IsLineEnd(char16_t c) {
  return c == u'\n' || c == u'\r';
}

// Mail programs ignore most styles, so that line ends and blanks are written as such.
String Escaped(StringView text) {
  String html;
  html.reserve(text.size() + text.size() / 8);
  bool blankBefore = true;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t c = text[i];
    const bool blank = c == u' ' || c == u'\t' || IsLineEnd(c);
    if (c == u'&') {
      html += u"&amp;";
    } else if (c == u'<') {
      html += u"&lt;";
    } else if (c == u'>') {
      html += u"&gt;";
    } else if (c == u'"') {
      html += u"&quot;";
    } else if (c == u'\'') {
      html += u"&#39;";
    } else if (IsLineEnd(c)) {
      if (c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++i;
      html += u"<br>\n";
    } else if (c == u' ') {
      // Also in front of a line end: one at the end of a line is lost as well.
      const bool last = i + 1 == text.size() || IsLineEnd(text[i + 1]);
      html.append(blankBefore || last ? kNoBreakSpace : u" ");
    } else if (c == u'\t') {
      for (int k = 0; k < 4; ++k) html += kNoBreakSpace;
    } else {
      // HTML has no other control characters.
      html += Platform::IsControl(c) || (c & 0xFFFE) == 0xFFFE ? u'\uFFFD' : c;
    }
    blankBefore = blank;
  }
  return html;
}

}  // namespace

String NoticeText::Plain() const {
  String text = CutMarker + u"\n\n";
  for (const String& paragraph : Introduction) text += paragraph + u"\n\n";
  if (!Text.empty()) text += Text + u"\n\n";
  if (!Footer.empty()) return text + u"-- \n" + Footer;
  text.erase(text.find_last_not_of(u"\r\n") + 1);
  return text;
}

String NoticeText::Html() const {
  String html = u"<!DOCTYPE html>\n<html>\n<head><meta charset=\"UTF-8\"></head>\n<body>\n<p>" +
                Escaped(CutMarker) + u"</p>\n";
  for (const String& paragraph : Introduction) html += u"<p dir=\"auto\">" + Escaped(paragraph) + u"</p>\n";
  if (!Text.empty()) html += u"<div dir=\"auto\">" + Escaped(Text) + u"</div>\n";
  if (!Footer.empty()) html += u"<hr>\n<p>" + Escaped(Footer) + u"</p>\n";
  return html + u"</body>\n</html>";
}

}  // namespace Gateway
