// HtmlEntityTable: the named characters of HTML (WHATWG HTML, 13.5).
#pragma once

#include <string_view>

namespace Mime {

// Pairs of a name and its one or two code points in hexadecimal, joined by "+", all between white space. A
// "*" in front of a name: it also counts without a ";" behind it.
extern const std::string_view kHtmlEntityTable;

}  // namespace Mime
