#include "mime/HtmlTokens.h"

#include <algorithm>

namespace Mime {
namespace {

constexpr StringView kBlanks = u" \t\n\r\f";
constexpr StringView kNameEnds = u" \t\n\r\f/>";

bool IsLetter(char16_t c) {
  const char16_t lower = LowerAscii(c);
  return lower >= u'a' && lower <= u'z';
}

bool IsBlank(char16_t c) {
  return kBlanks.find(c) != StringView::npos;
}

struct NamedAttribute {
  StringView Name;
  HtmlAttribute Attribute;
};
constexpr NamedAttribute kAttributes[] = {
    {u"alt", HtmlAttribute::Alt},     {u"class", HtmlAttribute::Class}, {u"hidden", HtmlAttribute::Hidden},
    {u"href", HtmlAttribute::Href},   {u"start", HtmlAttribute::Start}, {u"style", HtmlAttribute::Style},
    {u"value", HtmlAttribute::Value},
};

}  // namespace

bool HtmlTokens::Next() {
  while (!rest_.empty()) {
    if (contentOf_ != 0) {
      ReadContent();
      if (!text_.empty()) return true;
      continue;
    }
    if (rest_.front() == u'<') {
      const std::size_t before = rest_.size();
      if (ReadMarkup()) return true;
      if (rest_.size() != before) continue;
    }
    // A "<" without markup after it is text.
    kind_ = Kind::Text;
    text_ = rest_.substr(0, rest_.find(u'<', 1));
    rest_.remove_prefix(text_.size());
    return true;
  }
  return false;
}

// Reads a tag, a comment or a declaration. Returns true for a tag. Returns false for the others, and with
// nothing read for text.
bool HtmlTokens::ReadMarkup() {
  if (rest_.starts_with(u"<!--")) {
    SkipComment();
    return false;
  }
  const StringView name = rest_.substr(1);
  if (name.starts_with(u'!') || name.starts_with(u'?')) {
    SkipBehind(u">");
    return false;
  }
  if (name.starts_with(u'/')) {
    if (name.size() < 2) return false;
    if (!IsLetter(name[1])) {
      SkipBehind(u">");
      return false;
    }
    return ReadTag();
  }
  return !name.empty() && IsLetter(name.front()) && ReadTag();
}

bool HtmlTokens::ReadTag() {
  const bool isEnd = rest_[1] == u'/';
  const std::size_t nameAt = isEnd ? 2 : 1;
  std::size_t at = std::min(rest_.find_first_of(kNameEnds, nameAt), rest_.size());
  element_ = ElementNumber(rest_.substr(nameAt, at - nameAt));
  kind_ = isEnd ? Kind::EndTag : Kind::StartTag;
  attributes_ = {};
  while (at < rest_.size() && rest_[at] != u'>') {
    if (!ReadAttribute(at)) break;
  }
  const bool whole = at < rest_.size();
  rest_.remove_prefix(whole ? at + 1 : rest_.size());
  if (!whole) return false;
  const auto inside = ElementOf(element_).Inside;
  if (!isEnd && (inside == HtmlElement::Content::Raw || inside == HtmlElement::Content::Escapable))
    contentOf_ = element_;
  return true;
}

// Reads one attribute, or what separates two. Returns false at the end of the document.
bool HtmlTokens::ReadAttribute(std::size_t& at) {
  if (IsBlank(rest_[at]) || rest_[at] == u'/') return ++at < rest_.size();
  // A leading "=" belongs to the name.
  const std::size_t nameEnd = std::min(rest_.find_first_of(u" \t\n\r\f/>=", at + 1), rest_.size());
  const StringView name = rest_.substr(at, nameEnd - at);
  at = std::min(rest_.find_first_not_of(kBlanks, nameEnd), rest_.size());
  if (at == rest_.size()) return false;
  if (rest_[at] != u'=') {
    Keep(name, {});
    return true;
  }
  at = rest_.find_first_not_of(kBlanks, at + 1);
  if (at == StringView::npos) {
    at = rest_.size();
    return false;
  }
  const char16_t quote = rest_[at];
  const bool quoted = quote == u'"' || quote == u'\'';
  const std::size_t valueAt = quoted ? at + 1 : at;
  const std::size_t end = quoted ? rest_.find(quote, valueAt) : rest_.find_first_of(u" \t\n\r\f>", valueAt);
  if (end == StringView::npos) {
    at = rest_.size();
    return false;
  }
  Keep(name, rest_.substr(valueAt, end - valueAt));
  at = quoted ? end + 1 : end;
  return at < rest_.size();
}

void HtmlTokens::Keep(StringView name, StringView value) {
  for (const auto& [known, attribute] : kAttributes) {
    auto& place = attributes_[static_cast<std::size_t>(attribute)];
    if (EqualsIgnoreAsciiCase(name, known) && !place) place = value;
  }
}

// Reads the content of a raw or escapable element up to its end tag, which becomes the next token.
void HtmlTokens::ReadContent() {
  const HtmlElement& element = ElementOf(contentOf_);
  std::size_t end = 0;
  for (;; end += 2) {
    end = rest_.find(u"</", end);
    if (end == StringView::npos) break;
    const StringView name = rest_.substr(end + 2);
    const std::size_t length = element.Name.size();
    if (EqualsIgnoreAsciiCase(name.substr(0, length), element.Name) &&
        (name.size() == length || kNameEnds.find(name[length]) != StringView::npos))
      break;
  }
  const StringView content = rest_.substr(0, end);
  rest_.remove_prefix(content.size());
  kind_ = Kind::Text;
  text_ = element.Inside == HtmlElement::Content::Escapable ? content : StringView();
  contentOf_ = 0;
}

void HtmlTokens::SkipComment() {
  // "<!-->" and "<!--->" are complete comments.
  for (const StringView empty : {StringView(u"<!-->"), StringView(u"<!--->")}) {
    if (rest_.starts_with(empty)) return rest_.remove_prefix(empty.size());
  }
  rest_.remove_prefix(4);
  for (std::size_t end = rest_.find(u"--"); end != StringView::npos; end = rest_.find(u"--", end + 1)) {
    const StringView behind = rest_.substr(end + 2);
    if (behind.starts_with(u'>')) return rest_.remove_prefix(end + 3);
    if (behind.starts_with(u"!>")) return rest_.remove_prefix(end + 4);
  }
  rest_ = {};
}

void HtmlTokens::SkipBehind(StringView end) {
  const std::size_t found = rest_.find(end);
  rest_.remove_prefix(found == StringView::npos ? rest_.size() : found + end.size());
}

}  // namespace Mime
