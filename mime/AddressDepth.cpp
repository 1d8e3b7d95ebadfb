#include "mime/AddressDepth.h"

#include <algorithm>

namespace Mime {
namespace {

void Close(std::size_t& open) {
  if (open > 0) --open;
}

}  // namespace

std::size_t AddressDepth(std::string_view value) {
  std::size_t groups = 0, comments = 0, deepest = 0;
  bool quoted = false;
  char bracket = '\0';  // the end of the address or literal in brackets; 0 outside
  for (std::size_t i = 0; i < value.size(); ++i) {
    const char c = value[i];
    if (c == '\\') {
      ++i;
    } else if (quoted || (c == '"' && comments == 0)) {
      quoted = !quoted || c != '"';
    } else if (c == '(') {
      ++comments;
    } else if (c == ')') {
      Close(comments);
    } else if (comments > 0) {
      continue;
    } else if (bracket != '\0') {
      // A comma ends an address without a closing bracket.
      if (c == bracket || c == ',') bracket = '\0';
    } else if (c == '<' || c == '[') {
      bracket = c == '<' ? '>' : ']';
    } else if (c == ':') {
      ++groups;
    } else if (c == ';') {
      Close(groups);
    }
    deepest = std::max({deepest, groups, comments});
  }
  return deepest;
}

}  // namespace Mime
