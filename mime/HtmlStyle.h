// HtmlStyle: what an element's style says about its text.
#pragma once

#include "platform/Text.h"

namespace Mime {

using Platform::StringView;

struct HtmlStyle {
  bool Hidden = false;        // by one of the ways in which newsletters hide their preview texts
  bool Preformatted = false;  // line ends and blanks count
  bool NoMargin = false;      // nothing between this paragraph and the next

  // From the value of a style attribute. Linear in its size. Any thread.
  static HtmlStyle Of(StringView declarations);
};

}  // namespace Mime
