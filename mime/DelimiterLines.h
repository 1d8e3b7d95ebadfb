// DelimiterLines: finds the lines of a mail's content that may be delimiters of a multipart (RFC
// 2046, 5.1.1).
#pragma once

#include <string_view>

namespace Mime {

// The position of the first line that begins with two hyphens, from the beginning of a line on; the size of
// bytes if there is none.
inline std::size_t NextDelimiterLine(std::string_view bytes, std::size_t lineBegin) {
  if (bytes.substr(lineBegin, 2) == "--") return lineBegin;
  const std::size_t before = bytes.find("\n--", lineBegin);
  return before == std::string_view::npos ? bytes.size() : before + 1;
}

}  // namespace Mime
