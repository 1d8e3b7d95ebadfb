// HtmlElements: what the elements of HTML mean for the text of a mail.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/Text.h"

namespace Mime {

using Platform::String;
using Platform::StringView;

struct HtmlElement {
  // A block stands on lines of its own; a paragraph has an empty line in front of it and behind it, too.
  enum class Layout : std::uint8_t { Inline, Block, Paragraph };

  // Nothing can be inside a void element. A raw element's content is no text for a reader and ends at its
  // end tag alone; so does an escapable one's, which is text without tags. An unseen element's isn't shown.
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
    Term,  // or its description
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

// The number of an element by its name, in any case. All names that HTML doesn't know share the number 0.
std::uint8_t ElementNumber(StringView name);

// The element of such a number.
const HtmlElement& ElementOf(std::uint8_t number);

inline constexpr std::size_t kElementCount = 128;  // more than there are numbers

char16_t LowerAscii(char16_t c);
bool EqualsIgnoreAsciiCase(StringView text, StringView lowerCase);

}  // namespace Mime
