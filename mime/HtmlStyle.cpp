#include "mime/HtmlStyle.h"

#include <algorithm>

#include "mime/HtmlElements.h"

namespace Mime {
namespace {

constexpr StringView kBlanks = u" \t\n\r\f";

StringView Trimmed(StringView text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == StringView::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// The first four words of a value, without "!important".
struct Words {
  explicit Words(StringView value) {
    value = value.substr(0, value.find(u'!'));
    while (Count < 4 && !(value = Trimmed(value)).empty()) {
      List[Count++] = value.substr(0, value.find_first_of(kBlanks));
      value.remove_prefix(List[Count - 1].size());
    }
  }
  bool FirstIs(StringView word) const { return EqualsIgnoreAsciiCase(List[0], word); }
  StringView List[4];
  std::size_t Count = 0;
};

// True for "0", "0px", "0.0001pt" and the like, which are invisible.
bool IsNothing(StringView length) {
  return length.starts_with(u'0') && (length.size() < 2 || length[1] != u'.' || length.starts_with(u"0.0")) &&
         !(length.size() > 1 && length[1] >= u'0' && length[1] <= u'9');
}

}  // namespace

HtmlStyle HtmlStyle::Of(StringView declarations) {
  HtmlStyle style;
  bool noDisplay = false, invisible = false, officeHides = false, transparent = false;
  bool noHeight = false, cut = false, nothingAbove = false, nothingBelow = false;
  while (!declarations.empty()) {
    const StringView declaration = declarations.substr(0, declarations.find(u';'));
    declarations.remove_prefix(std::min(declaration.size() + 1, declarations.size()));
    const std::size_t colon = declaration.find(u':');
    if (colon == StringView::npos) continue;
    const StringView property = Trimmed(declaration.substr(0, colon));
    const Words value(declaration.substr(colon + 1));
    const auto is = [property](StringView name) { return EqualsIgnoreAsciiCase(property, name); };
    if (is(u"display")) {
      noDisplay = value.FirstIs(u"none");
    } else if (is(u"visibility")) {
      invisible = value.FirstIs(u"hidden") || value.FirstIs(u"collapse");
    } else if (is(u"mso-hide")) {
      officeHides = value.FirstIs(u"all");
    } else if (is(u"opacity")) {
      transparent = value.Count > 0 && IsNothing(value.List[0]);
    } else if (is(u"max-height") || is(u"height")) {
      noHeight = noHeight || (value.Count > 0 && IsNothing(value.List[0]));
    } else if (is(u"overflow")) {
      cut = value.FirstIs(u"hidden");
    } else if (is(u"white-space")) {
      style.Preformatted =
          EqualsIgnoreAsciiCase(value.List[0].substr(0, 3), u"pre") || value.FirstIs(u"break-spaces");
    } else if (is(u"margin") && value.Count > 0) {
      nothingAbove = IsNothing(value.List[0]);
      nothingBelow = IsNothing(value.List[value.Count > 2 ? 2 : 0]);
    } else if (is(u"margin-top")) {
      nothingAbove = IsNothing(value.List[0]);
    } else if (is(u"margin-bottom")) {
      nothingBelow = IsNothing(value.List[0]);
    }
  }
  style.Hidden = noDisplay || invisible || officeHides || transparent || (noHeight && cut);
  style.NoMargin = nothingAbove && nothingBelow;
  return style;
}

}  // namespace Mime
