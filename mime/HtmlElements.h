// HtmlElements: the effect of each HTML element on the text of a mail.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/Text.h"

namespace Mime {

using Platform::String;
using Platform::StringView;

struct HtmlElement {
  // A block is on lines of its own; a paragraph also has an empty line before and after it.
  enum class Layout : std::uint8_t { Inline, Block, Paragraph };

  // A void element has no content. The content of a raw element is not shown and ends only at its end tag;
  // that of an escapable element ends so, too, and is shown as text without tags. The content of an unseen
  // element is not shown.
  enum class Content : std::uint8_t { Normal, Void, Raw, Escapable, Unseen };

  enum class Role : std::uint8_t {
    None,
    Link,
    LineBreak,
    Image,
    Item,
    NumberedList,
    BulletList,
    Paragraph,
    Preformatted,
    Quotation,
    DescriptionList,
    Term,  // or a description
    Cell,
    Row,
    Table
  };

  StringView Name;  // lower case
  Layout Place = Layout::Inline;
  Content Inside = Content::Normal;
  Role Part = Role::None;

  bool IsBlock() const { return Place != Layout::Inline; }
  bool IsList() const { return Part == Role::NumberedList || Part == Role::BulletList; }
};

// The number of an element, by its name in any case. Unknown names have the number 0.
std::uint8_t ElementNumber(StringView name);

// The element with this number.
const HtmlElement& ElementOf(std::uint8_t number);

inline constexpr std::size_t kElementCount = 128;  // exceeds every number

char16_t LowerAscii(char16_t c);
bool EqualsIgnoreAsciiCase(StringView text, StringView lowerCase);

}  // namespace Mime
