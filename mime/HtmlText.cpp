#include "mime/HtmlText.h"

#include <glib.h>

#include <charconv>
#include <deque>
#include <optional>
#include <utility>

#include "mime/HtmlEntities.h"
#include "mime/HtmlLines.h"
#include "mime/HtmlLink.h"
#include "mime/HtmlOpenElements.h"
#include "mime/HtmlStyle.h"
#include "mime/HtmlTokens.h"

namespace Mime {
namespace {

using Open = HtmlOpenElements::Open;
using Role = HtmlElement::Role;

// Above any real list; limits the length of a mark to about that of the tag that sets it.
constexpr int kLargestItem = 99999;

// Converts the tokens of a document to text.
class TextCollector {
 public:
  explicit TextCollector(StringView html)
      : tokens_(html), lines_(html.size()), open_([this](const Open& element) { OnClosed(element); }) {}

  String Collect() {
    while (tokens_.Next()) {
      if (tokens_.What() == HtmlTokens::Kind::Text) {
        if (hidden_ == 0) PutText(tokens_.Text());
        continue;
      }
      afterPreTag_ = false;
      if (tokens_.What() == HtmlTokens::Kind::StartTag) {
        Start(tokens_.Element());
      } else {
        End(tokens_.Element());
      }
    }
    EndLink();
    return lines_.Take();
  }

 private:
  struct List {
    bool Numbered;
    int Next;
  };

  struct Link {
    String Address;
    std::size_t Begin;  // position in the text
  };

  void Start(std::uint8_t number) {
    const HtmlElement& element = ElementOf(number);
    open_.CloseBefore(element);
    const HtmlStyle style = StyleOfTag();
    const bool hides = style.Hidden || element.Inside == HtmlElement::Content::Unseen ||
                       tokens_.Attribute(HtmlAttribute::Hidden).has_value();
    if (element.Inside == HtmlElement::Content::Void) {
      if (hidden_ == 0 && !hides) PutVoid(element);
      return;
    }
    const bool preformats = style.Preformatted || element.Part == Role::Preformatted;
    const bool tight = style.NoMargin || (element.Part == Role::Paragraph && HasOfficeClass()) ||
                       (element.IsList() && !lists_.empty());
    const Open entry{number, hides, preformats, tight};
    open_.Push(entry);
    if (hides) ++hidden_;
    if (preformats) ++preformatted_;
    if (hidden_ == 0) Boundary(element, tight);
    Begin(element);
  }

  // The effect of an element other than its layout.
  void Begin(const HtmlElement& element) {
    if (element.IsList()) lists_.push_back({element.Part == Role::NumberedList, StartOfList()});
    if (hidden_ > 0) return;
    switch (element.Part) {
      case Role::Link:
        EndLink();
        BeginLink();
        break;
      case Role::Item:
        BeginItem();
        break;
      case Role::Cell:
        lines_.Blank();
        break;
      case Role::Preformatted:
        afterPreTag_ = true;
        break;
      case Role::Quotation:
        PutCharacter(u'\u201C');
        break;
      default:
        break;
    }
  }

  void End(std::uint8_t number) {
    const HtmlElement& element = ElementOf(number);
    // An end tag without a start tag is an empty paragraph or a line break.
    if (!open_.Close(number) && hidden_ == 0 &&
        (element.Part == Role::Paragraph || element.Part == Role::LineBreak))
      PutVoid(element);
    if (element.Part == Role::Link) EndLink();
  }

  void OnClosed(const Open& open) {
    const HtmlElement& element = ElementOf(open.Number);
    if (element.IsList()) lists_.pop_back();
    if (open.Preformats) --preformatted_;
    if (open.Hides) --hidden_;
    if (hidden_ > 0 || open.Hides) return;
    if (element.Part == Role::Link) EndLink();
    if (element.Part == Role::Quotation) PutCharacter(u'\u201D');
    if (element.Part == Role::Item) lines_.EndMark();
    Boundary(element, open.Tight);
  }

  // The start or end of a block.
  void Boundary(const HtmlElement& element, bool tight) {
    if (!element.IsBlock()) return;
    lines_.EndLine();
    if (element.Place == HtmlElement::Layout::Paragraph && !tight) lines_.EmptyLine();
  }

  void PutVoid(const HtmlElement& element) {
    if (element.Part == Role::LineBreak) lines_.BreakLine();
    Boundary(element, false);
    const auto& alternative = tokens_.Attribute(HtmlAttribute::Alt);
    if (element.Part == Role::Image && alternative) PutText(*alternative, true);
  }

  void PutText(StringView text, bool inAttribute = false) {
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (text[i] == u'&') {
        const HtmlReference reference = ReadHtmlReference(text.substr(i), inAttribute);
        for (const char16_t c : reference.Characters) PutCharacter(c);
        if (reference.Length > 0) {
          i += reference.Length - 1;
          continue;
        }
      }
      PutCharacter(text[i]);
    }
  }

  void PutCharacter(char16_t c) {
    const bool secondOfLineEnd = c == u'\n' && afterReturn_;
    const bool firstOfPre = (c == u'\n' || c == u'\r') && afterPreTag_;
    afterReturn_ = c == u'\r';
    afterPreTag_ = false;
    if (secondOfLineEnd || firstOfPre) return;
    if (c == u'\n' || c == u'\r') {
      if (preformatted_ > 0) {
        lines_.BreakLine();
      } else {
        lines_.Blank();
      }
    } else if (preformatted_ == 0 && (c == u' ' || c == u'\t' || c == u'\f')) {
      lines_.Blank();
    } else {
      // A control character is damage and must be visible.
      lines_.Put(c < 0x20 && c != u'\t' && c != u'\f' ? u'\uFFFD' : WithoutC1(c));
    }
  }

  void BeginItem() {
    if (lists_.empty() || !lists_.back().Numbered) return lines_.PutMark(u"*");
    List& list = lists_.back();
    list.Next = NumberIn(HtmlAttribute::Value).value_or(list.Next);
    lines_.PutMark(list.Next > kLargestItem ? u"*" : Platform::FromUtf8(std::to_string(list.Next) + "."));
    if (list.Next <= kLargestItem) ++list.Next;
  }

  int StartOfList() const { return NumberIn(HtmlAttribute::Start).value_or(1); }

  std::optional<int> NumberIn(HtmlAttribute name) const {
    const auto& value = tokens_.Attribute(name);
    if (!value) return std::nullopt;
    constexpr std::size_t kDigits = 5;
    const std::string digits = Platform::ToUtf8(value->substr(0, kDigits + 1));
    int number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    const bool whole = error == std::errc{} && end == digits.data() + digits.size();
    return whole && number <= kLargestItem ? std::optional(number) : std::nullopt;
  }

  void BeginLink() {
    const auto& address = tokens_.Attribute(HtmlAttribute::Href);
    if (!address) return;
    String shown = LinkAddress(*address);
    if (!shown.empty()) link_ = {std::move(shown), lines_.Size()};
  }

  void EndLink() {
    if (!link_) return;
    const Link link = *std::exchange(link_, std::nullopt);
    const StringView text = lines_.From(link.Begin);
    if (text.find_first_not_of(u" \n") == StringView::npos || ShowsAddress(text, link.Address)) return;
    lines_.PutBehind(u"<" + link.Address + u">");
  }

  HtmlStyle StyleOfTag() const {
    const auto& style = tokens_.Attribute(HtmlAttribute::Style);
    if (!style) return {};
    return style->find(u'&') == StringView::npos ? HtmlStyle::Of(*style)
                                                 : HtmlStyle::Of(DecodeHtmlAttribute(*style));
  }

  // Outlook writes each line as a paragraph of this class; some programs put "x_" in front of the class.
  bool HasOfficeClass() const {
    StringView name = tokens_.Attribute(HtmlAttribute::Class).value_or(StringView());
    while (name.starts_with(u"x_")) name.remove_prefix(2);
    return name.starts_with(u"Mso");
  }

  HtmlTokens tokens_;
  HtmlLines lines_;
  HtmlOpenElements open_;
  std::deque<List> lists_;  // the open ones; grows without copying
  std::optional<Link> link_;
  std::size_t hidden_ = 0;        // open elements with hidden content
  std::size_t preformatted_ = 0;  // open elements in which blanks and line ends are kept
  bool afterPreTag_ = false;      // a line end here is dropped
  bool afterReturn_ = false;      // a line feed here belongs to the CR before it
};

}  // namespace

String HtmlToText(StringView html) {
  return TextCollector(html).Collect();
}

std::string HtmlCharset(std::string_view bytes) {
  constexpr std::size_t kMetaLimit = 2048;
  std::string start(bytes.substr(0, kMetaLimit));
  for (char& c : start) c = g_ascii_tolower(c);
  const std::size_t meta = start.find("<meta");
  const std::size_t name = meta == std::string::npos ? meta : start.find("charset=", meta);
  if (name == std::string::npos) return {};
  const std::size_t first = start.find_first_not_of("\"' ", name + 8);
  if (first == std::string::npos) return {};
  return start.substr(first, start.find_first_of("\"'; />", first) - first);
}

}  // namespace Mime
