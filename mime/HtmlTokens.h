// HtmlTokens: splits an HTML document into texts and tags.
//
// Follows the tokenizer of the HTML standard (WHATWG HTML, 13.2.5). Comments, declarations, processing
// instructions and a tag that the end of the document cuts off give no tokens. Linear in the size of any
// document; nothing is copied. One thread at a time.
#pragma once

#include <array>
#include <optional>

#include "mime/HtmlElements.h"

namespace Mime {

// The attributes that affect the text.
enum class HtmlAttribute : std::size_t { Alt, Class, Hidden, Href, Start, Style, Value };

class HtmlTokens {
 public:
  enum class Kind { Text, StartTag, EndTag };

  // The document must outlive this object.
  explicit HtmlTokens(StringView document) : rest_(document) {}

  // Reads the next token. Returns false at the end of the document.
  bool Next();

  Kind What() const { return kind_; }

  // For a text: its characters, with references not decoded.
  StringView Text() const { return text_; }

  // For a tag.
  std::uint8_t Element() const { return element_; }

  // The value of a start tag's attribute, with references not decoded; empty if it has no value; nothing if
  // the tag doesn't have the attribute. The first of two counts.
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
  std::uint8_t contentOf_ = 0;  // the raw or escapable element that contains the rest; 0 for none
  std::array<std::optional<StringView>, 7> attributes_;
};

}  // namespace Mime
