#include "mime/HtmlElements.h"

#include <algorithm>
#include <iterator>

namespace Mime {
namespace {

using Layout = HtmlElement::Layout;
using Content = HtmlElement::Content;
using Role = HtmlElement::Role;

// The first row is for unknown names; the others are sorted by name.
constexpr HtmlElement kElements[] = {
    {u""},
    {u"a", Layout::Inline, Content::Normal, Role::Link},
    {u"address", Layout::Block},
    {u"area", Layout::Inline, Content::Void},
    {u"article", Layout::Block},
    {u"aside", Layout::Block},
    {u"b"},
    {u"base", Layout::Inline, Content::Void},
    {u"blockquote", Layout::Paragraph},
    {u"body", Layout::Block},
    {u"br", Layout::Inline, Content::Void, Role::LineBreak},
    {u"caption", Layout::Block},
    {u"center", Layout::Block},
    {u"col", Layout::Inline, Content::Void},
    {u"datalist", Layout::Inline, Content::Unseen},
    {u"dd", Layout::Block, Content::Normal, Role::Term},
    {u"details", Layout::Block},
    {u"dir", Layout::Paragraph, Content::Normal, Role::BulletList},
    {u"div", Layout::Block},
    {u"dl", Layout::Block, Content::Normal, Role::DescriptionList},
    {u"dt", Layout::Block, Content::Normal, Role::Term},
    {u"embed", Layout::Inline, Content::Void},
    {u"fieldset", Layout::Block},
    {u"figcaption", Layout::Block},
    {u"figure", Layout::Block},
    {u"font"},
    {u"footer", Layout::Block},
    {u"form", Layout::Block},
    {u"h1", Layout::Paragraph},
    {u"h2", Layout::Paragraph},
    {u"h3", Layout::Paragraph},
    {u"h4", Layout::Paragraph},
    {u"h5", Layout::Paragraph},
    {u"h6", Layout::Paragraph},
    {u"header", Layout::Block},
    {u"hgroup", Layout::Block},
    {u"hr", Layout::Paragraph, Content::Void},
    {u"html", Layout::Block},
    {u"i"},
    {u"iframe", Layout::Inline, Content::Raw},
    {u"img", Layout::Inline, Content::Void, Role::Image},
    {u"input", Layout::Inline, Content::Void},
    {u"legend", Layout::Block},
    {u"li", Layout::Block, Content::Normal, Role::Item},
    {u"link", Layout::Inline, Content::Void},
    {u"listing", Layout::Paragraph, Content::Normal, Role::Preformatted},
    {u"main", Layout::Block},
    {u"menu", Layout::Paragraph, Content::Normal, Role::BulletList},
    {u"meta", Layout::Inline, Content::Void},
    {u"nav", Layout::Block},
    {u"noembed", Layout::Inline, Content::Raw},
    {u"noframes", Layout::Inline, Content::Raw},
    {u"ol", Layout::Paragraph, Content::Normal, Role::NumberedList},
    {u"p", Layout::Paragraph, Content::Normal, Role::Paragraph},
    {u"param", Layout::Inline, Content::Void},
    {u"pre", Layout::Paragraph, Content::Normal, Role::Preformatted},
    {u"q", Layout::Inline, Content::Normal, Role::Quotation},
    {u"script", Layout::Inline, Content::Raw},
    {u"search", Layout::Block},
    {u"section", Layout::Block},
    {u"select", Layout::Inline, Content::Unseen},
    {u"source", Layout::Inline, Content::Void},
    {u"span"},
    {u"style", Layout::Inline, Content::Raw},
    {u"summary", Layout::Block},
    {u"table", Layout::Block, Content::Normal, Role::Table},
    {u"tbody", Layout::Block},
    {u"td", Layout::Inline, Content::Normal, Role::Cell},
    {u"template", Layout::Inline, Content::Unseen},
    {u"textarea", Layout::Block, Content::Escapable, Role::Preformatted},
    {u"tfoot", Layout::Block},
    {u"th", Layout::Inline, Content::Normal, Role::Cell},
    {u"thead", Layout::Block},
    {u"title", Layout::Inline, Content::Raw},
    {u"tr", Layout::Block, Content::Normal, Role::Row},
    {u"track", Layout::Inline, Content::Void},
    {u"ul", Layout::Paragraph, Content::Normal, Role::BulletList},
    {u"wbr", Layout::Inline, Content::Void},
    {u"xml", Layout::Inline, Content::Unseen},  // settings of an office program, not shown
    {u"xmp", Layout::Paragraph, Content::Escapable, Role::Preformatted},
};
static_assert(std::size(kElements) <= kElementCount);
static_assert(std::is_sorted(std::begin(kElements), std::end(kElements),
                             [](const HtmlElement& a, const HtmlElement& b) { return a.Name < b.Name; }));

constexpr std::size_t kLongestName = 10;

}  // namespace

char16_t LowerAscii(char16_t c) {
  return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c | 0x20) : c;
}

bool EqualsIgnoreAsciiCase(StringView text, StringView lowerCase) {
  return std::equal(text.begin(), text.end(), lowerCase.begin(), lowerCase.end(),
                    [](char16_t a, char16_t b) { return LowerAscii(a) == b; });
}

std::uint8_t ElementNumber(StringView name) {
  if (name.size() > kLongestName) return 0;
  char16_t lower[kLongestName];
  std::transform(name.begin(), name.end(), lower, LowerAscii);
  const StringView wanted(lower, name.size());
  const auto* found = std::lower_bound(
      std::begin(kElements), std::end(kElements), wanted,
      [](const HtmlElement& element, StringView searched) { return element.Name < searched; });
  return found != std::end(kElements) && found->Name == wanted
             ? static_cast<std::uint8_t>(found - std::begin(kElements))
             : std::uint8_t{0};
}

const HtmlElement& ElementOf(std::uint8_t number) {
  return kElements[number];
}

}  // namespace Mime
