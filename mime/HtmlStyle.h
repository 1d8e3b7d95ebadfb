// HtmlStyle: the properties of an element's style that affect its text.
#pragma once

#include "platform/Text.h"

namespace Mime {

using Platform::StringView;

struct HtmlStyle {
  bool Hidden = false;        // by one of the methods by which newsletters hide preview texts
  bool Preformatted = false;  // line ends and blanks are kept
  bool NoMargin = false;      // no empty line before the next paragraph

  // Parses the value of a style attribute. Linear in its size. Any thread.
  static HtmlStyle Of(StringView declarations);
};

}  // namespace Mime
