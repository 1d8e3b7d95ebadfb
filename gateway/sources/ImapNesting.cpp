#include "gateway/sources/ImapNesting.h"

#include <algorithm>
#include <charconv>

namespace Gateway {
namespace {

constexpr std::size_t kDeepest = 100;

// Of a longer line, the end is kept up to twice this size.
constexpr std::size_t kLineEndKept = 64;
constexpr std::size_t kLineBeginKept = 32;

}  // namespace

bool ImapNesting::Allows(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t mail = std::min(skipped_, bytes.size());
    skipped_ -= mail;
    bytes.remove_prefix(mail);
    if (bytes.empty()) break;
    const char c = bytes.front();
    bytes.remove_prefix(1);
    line_ += c;
    if (line_.size() > kLineBeginKept + 2 * kLineEndKept) line_.erase(kLineBeginKept, kLineEndKept);
    if (c == '(' && ++depth_ > kDeepest) return false;
    if (c == ')' && depth_ > 0) --depth_;
    if (c != '\n') continue;
    skipped_ = LiteralBehindLine();
    // A mail doesn't end the answer that it is in.
    if (skipped_ > 0) continue;
    depth_ = 0;
    line_.clear();
  }
  return true;
}

std::size_t ImapNesting::LiteralBehindLine() const {
  std::string_view line = line_;
  if (!line.starts_with("* ") || !line.ends_with("}\r\n")) return 0;
  const std::size_t number = std::min(line.size(), line.find_first_not_of("0123456789", 2));
  if (number == 2 || !line.substr(number).starts_with(" FETCH (")) return 0;
  const std::size_t brace = line.rfind('{');
  if (brace == std::string_view::npos) return 0;
  const std::string_view before = line.substr(0, brace);
  if (!before.ends_with(" BODY[] ") && !before.ends_with("(BODY[] ") && !before.ends_with(" BODY[HEADER] ") &&
      !before.ends_with("(BODY[HEADER] "))
    return 0;
  std::size_t size = 0;
  const char* end = line.data() + line.size() - 3;
  return std::from_chars(line.data() + brace + 1, end, size).ptr == end ? size : 0;
}

}  // namespace Gateway
