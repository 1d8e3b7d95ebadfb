#include "mime/HeaderRepair.h"

#include <glib.h>

#include <algorithm>
#include <iterator>
#include <set>
#include <span>
#include <string_view>

#include "mime/DelimiterLines.h"

namespace Mime {
namespace {

constexpr std::string_view kSingleFields[] = {"from", "content-type", "content-transfer-encoding",
                                              "content-disposition"};
constexpr std::size_t kContentType = 1;
constexpr std::string_view kParameters[] = {"boundary", "charset",    "format", "delsp",      "type",
                                            "name",     "smime-type", "start",  "report-type"};

bool EqualsIgnoreCase(std::string_view text, std::string_view name) {
  return text.size() == name.size() && g_ascii_strncasecmp(text.data(), name.data(), name.size()) == 0;
}

bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

// The length of the name of a known parameter and its equals sign at the start of the text; 0 if there is
// none.
std::size_t ParameterLength(std::string_view text) {
  for (const std::string_view name : kParameters) {
    if (!EqualsIgnoreCase(text.substr(0, name.size()), name)) continue;
    const std::size_t equals = text.find_first_not_of(" \t*", name.size());
    if (equals != std::string_view::npos && text[equals] == '=') return equals + 1;
  }
  return 0;
}

// If a known parameter follows blanks without a semicolon, the first blank becomes one. A line end among the
// blanks becomes a blank, since a line that begins with a semicolon would not continue the field. An unclosed
// quote becomes a blank as well.
void RepairParameters(std::span<char> value) {
  const std::string_view text(value.data(), value.size());
  bool quoted = false;
  std::size_t quote = 0;
  char before = ';';
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\\' && quoted) {
      ++i;
    } else if (text[i] == '"') {
      quoted = !quoted;
      quote = i;
    }
    if (quoted || i >= text.size()) continue;
    if (!IsBlank(text[i])) {
      before = text[i];
      continue;
    }
    const std::size_t start = i;
    while (i + 1 < text.size() && IsBlank(text[i + 1])) ++i;
    if (before == ';' || before == '=' || ParameterLength(text.substr(i + 1)) == 0) continue;
    for (std::size_t k = start; k <= i; ++k) value[k] = ' ';
    value[start] = ';';
  }
  if (quoted) value[quote] = ' ';
}

// The boundary in a Content-Type; empty without one.
std::string_view BoundaryOf(std::string_view value) {
  for (std::size_t at = value.find(';'); at != std::string_view::npos; at = value.find(';', at + 1)) {
    const std::size_t name = std::min(value.find_first_not_of(" \t\r\n", at + 1), value.size());
    const std::size_t length = ParameterLength(value.substr(name));
    if (length == 0 || g_ascii_tolower(value[name]) != 'b') continue;
    std::string_view boundary = value.substr(name + length);
    boundary.remove_prefix(std::min(boundary.find_first_not_of(" \t\r\n"), boundary.size()));
    if (boundary.starts_with('"')) return boundary.substr(1, boundary.substr(1).find('"'));
    return boundary.substr(0, boundary.find_first_of("; \t\r\n"));
  }
  return {};
}

// Reads the lines of a message and repairs its headers.
class Repair {
 public:
  explicit Repair(std::string& bytes) : bytes_(bytes) {}

  void Run() {
    for (std::size_t at = 0; at < bytes_.size();) {
      if (!inHeader_) at = NextDelimiterLine(bytes_, at);
      const std::string_view line = LineAt(at);
      if (line.starts_with("--") && IsDelimiter(line.substr(2))) {
        BeginHeader();
        at += line.size();
      } else if (inHeader_) {
        at += HeaderLine(at, line);
      } else {
        at += line.size();
      }
    }
  }

 private:
  std::string_view LineAt(std::size_t position) const {
    const std::size_t end = bytes_.find('\n', position);
    return std::string_view(bytes_).substr(position, end == std::string::npos ? end : end + 1 - position);
  }

  void BeginHeader() {
    inHeader_ = true;
    std::ranges::fill(seen_, false);
  }

  bool IsDelimiter(std::string_view line) const {
    line = line.substr(0, line.find_last_not_of(" \t\r\n") + 1);
    return boundaries_.contains(line);
  }

  // Processes the field, or the end of the header, at a position. Returns its length.
  std::size_t HeaderLine(std::size_t position, std::string_view line) {
    const std::size_t colon = line.find(':');
    if (colon == std::string_view::npos) {
      inHeader_ = position == 0 && line.starts_with("From ");
      return line.size();
    }
    std::size_t end = position + line.size();
    while (end < bytes_.size() && (bytes_[end] == ' ' || bytes_[end] == '\t')) end += LineAt(end).size();
    const std::string_view name = line.substr(0, line.substr(0, colon).find_last_not_of(" \t") + 1);
    const auto* const found = std::ranges::find_if(
        kSingleFields, [&](std::string_view single) { return EqualsIgnoreCase(name, single); });
    if (found == std::end(kSingleFields)) return end - position;
    const auto field = static_cast<std::size_t>(found - std::begin(kSingleFields));
    if (seen_[field]) {
      bytes_[position] = 'X';
    } else if (field == kContentType) {
      const std::span<char> value(bytes_.data() + position + colon + 1, end - position - colon - 1);
      RepairParameters(value);
      const std::string_view boundary = BoundaryOf({value.data(), value.size()});
      if (!boundary.empty()) boundaries_.insert(boundary);
    }
    seen_[field] = true;
    return end - position;
  }

  std::string& bytes_;
  bool inHeader_ = true;
  bool seen_[std::size(kSingleFields)] = {};
  std::set<std::string_view> boundaries_;
};

}  // namespace

void RepairHeaders(std::string& bytes) {
  Repair(bytes).Run();
}

}  // namespace Mime
