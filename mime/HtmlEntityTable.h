// HtmlEntityTable: the named characters of HTML (WHATWG HTML, 13.5).
#pragma once

#include <string_view>

namespace Mime {

// Pairs of a name and its one or two code points in hexadecimal, joined by "+", separated by white space. "*"
// in front of a name: the ";" may be missing.
extern const std::string_view kHtmlEntityTable;

}  // namespace Mime
