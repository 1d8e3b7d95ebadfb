// HtmlTokens: an HTML document as a row of texts and tags.
//
// Cut as the HTML standard's tokenizer cuts (WHATWG HTML, 13.2.5), whatever the document holds. Comments,
// declarations and processing instructions are no tokens, nor is what is left of a tag that the document's
// end cuts off. Linear in the size of the document, whatever it holds; nothing is copied. Any thread, one at
// a time.
#pragma once

#include <array>
#include <optional>

#include "mime/HtmlElements.h"

namespace Mime {

// The attributes that matter to the text.
enum class HtmlAttribute : std::size_t { Alt, Class, Hidden, Href, Start, Style, Value };

class HtmlTokens {
 public:
  enum class Kind { Text, StartTag, EndTag };

  // The document has to outlive this object.
  explicit HtmlTokens(StringView document) : rest_(document) {}

  // Goes to the next token. False at the end of the document.
  bool Next();

  Kind What() const { return kind_; }

  // Of a text: its characters, in which references aren't decoded.
  StringView Text() const { return text_; }

  // Of a tag.
  std::uint8_t Element() const { return element_; }

  // The value of a start tag's attribute, in which references aren't decoded; empty where it has no value.
  // Nothing where the tag hasn't got it. The first of two counts.
  const std::optional<StringView>& Attribute(HtmlAttribute name) const {
    return attributes_[static_cast<std::size_t>(name)];
  }

 private:
  bool ReadMarkup();
  bool ReadTag();
  bool ReadAttribute(std::size_t& at);
  void ReadContent();
  void SkipComment();
  void SkipBehind(StringView end);
  void Keep(StringView name, StringView value);

  StringView rest_;
  Kind kind_ = Kind::Text;
  StringView text_;
  std::uint8_t element_ = 0;
  std::uint8_t contentOf_ = 0;  // the raw or escapable element in which the rest begins; 0 for none
  std::array<std::optional<StringView>, 7> attributes_;
};

}  // namespace Mime
