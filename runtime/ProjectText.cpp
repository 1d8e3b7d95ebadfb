#include "runtime/ProjectText.h"

#include <algorithm>

#include "platform/Failure.h"
#include "platform/Hex.h"
#include "platform/ProgramTexts.h"
#include "platform/StoredNames.h"
#include "runtime/Texts.h"

namespace Runtime {
namespace {

constexpr char16_t kByteOrderMark = 0xFEFF;

// Messages show this text after the file's path.
[[noreturn]] void Refuse(std::int32_t number, StringView argument = {}) {
  throw Failure(FailureNumber::RefusedInput, u"Runtime.ProjectText", TextOf(number, argument));
}

bool IsBlank(char16_t c) {
  return c == u' ' || c == u'\t';
}

StringView WithoutBlanks(StringView text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

// The text in one line, with escape sequences. The special characters are escaped too.
String Escape(StringView text, StringView special) {
  String escaped;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t c = text[i];
    const bool atAnEnd = i == 0 || i + 1 == text.size();
    if (c == u'\\') {
      escaped += u"\\\\";
    } else if (c == u'\n') {
      escaped += u"\\n";
    } else if (c == u'\r') {
      escaped += u"\\r";
    } else if (c == u'\t') {
      escaped += u"\\t";
    } else if (c == u' ' && atAnEnd) {
      escaped += u"\\s";
    } else if (IsSurrogatePair(text, i)) {
      escaped += text.substr(i++, 2);
    } else if (c < 0x20 || c == kByteOrderMark || IsSurrogate(c) || special.find(c) != StringView::npos) {
      escaped += u"\\u" + HexText(c);
    } else {
      escaped += c;
    }
  }
  return escaped;
}

std::optional<char16_t> ReadCode(StringView digits) {
  const auto bytes = ParseHex(digits);
  if (!bytes || bytes->size() != 2) return {};
  return static_cast<char16_t>((*bytes)[0] << 8 | (*bytes)[1]);
}

// The text without escape sequences. Any other backslash is kept, as in a path that a user typed.
String Unescape(StringView text) {
  String plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t next = text[i] == u'\\' && i + 1 < text.size() ? text[i + 1] : u'\0';
    const auto known = StringView(u"\\nrts").find(next);
    if (next != u'\0' && known != StringView::npos) {
      plain += u"\\\n\r\t "[known];
      ++i;
    } else if (const auto code = next == u'u' ? ReadCode(text.substr(i + 2, 4)) : std::nullopt) {
      plain += *code;
      i += 5;
    } else {
      plain += text[i];
    }
  }
  return plain;
}

}  // namespace

ProjectText::Line ProjectText::Read(String text, String end) {
  Line line;
  const StringView body = WithoutBlanks(text);
  const auto equals = body.find(u'=');
  if (body.empty() || body[0] == u';' || body[0] == u'#') {
    line.Kind = LineKind::Comment;
  } else if (body[0] == u'[' && body.back() == u']') {
    line.Kind = LineKind::Section;
    line.Name = Unescape(body.substr(1, body.size() - 2));
  } else if (body[0] != u'[' && equals != StringView::npos) {
    line.Kind = LineKind::Key;
    line.Name = Unescape(WithoutBlanks(body.substr(0, equals)));
    line.Value = Unescape(WithoutBlanks(body.substr(equals + 1)));
  } else {
    line.Kind = LineKind::Unknown;
  }
  line.Text = std::move(text);
  line.End = std::move(end);
  return line;
}

ProjectText::ProjectText(std::string_view bytes) {
  if (!IsUtf8(bytes) || bytes.find('\0') != std::string_view::npos) Refuse(TextNumber::kContentNotUtf8);
  const String text = FromUtf8(bytes);
  StringView rest = text;
  if (rest.starts_with(kByteOrderMark)) {
    byteOrderMark_ = true;
    rest.remove_prefix(1);
  }
  while (!rest.empty()) {
    const std::size_t feed = rest.find(u'\n');
    const std::size_t next = feed == StringView::npos ? rest.size() : feed + 1;
    std::size_t end = std::min(feed, rest.size());
    if (feed != StringView::npos && end > 0 && rest[end - 1] == u'\r') --end;
    lines_.push_back(Read(String(rest.substr(0, end)), String(rest.substr(end, next - end))));
    rest.remove_prefix(next);
  }
  if (!lines_.empty() && !lines_[0].End.empty()) lineEnd_ = lines_[0].End;
}

void ProjectText::RequireProject() const {
  std::size_t first = 0;
  while (first < lines_.size() && lines_[first].Kind == LineKind::Comment) ++first;
  if (first == lines_.size() || FindSection(ProjectHeader::kSection) != first)
    Refuse(TextNumber::kNoProjectSection);
  const auto format = KeyValue(ProjectHeader::kSection, ProjectHeader::kFormat);
  if (!format) Refuse(TextNumber::kNoProjectFormat);
  if (*format != ProjectHeader::kFormatNumber)
    Refuse(TextNumber::kProjectFormatUnknown, format->substr(0, 20));
}

std::string ProjectText::ToBytes() const {
  String text;
  if (byteOrderMark_) text += kByteOrderMark;
  for (const Line& line : lines_) text.append(line.Text).append(line.End);
  return ToUtf8(text);
}

std::size_t ProjectText::FindSection(StringView section) const {
  std::size_t i = 0;
  while (i < lines_.size() &&
         !(lines_[i].Kind == LineKind::Section && EqualsIgnoreCase(lines_[i].Name, section)))
    ++i;
  return i;
}

// The position after the section's last line that isn't a comment or blank.
std::size_t ProjectText::EndOfSection(std::size_t header) const {
  std::size_t end = header + 1;
  for (std::size_t i = end; i < lines_.size() && lines_[i].Kind != LineKind::Section; ++i) {
    if (lines_[i].Kind != LineKind::Comment) end = i + 1;
  }
  return end;
}

bool ProjectText::HasSection(StringView section) const {
  return FindSection(section) < lines_.size();
}

const ProjectText::Line* ProjectText::FindKey(StringView section, StringView key) const {
  bool inside = false;
  for (const Line& line : lines_) {
    if (line.Kind == LineKind::Section) inside = EqualsIgnoreCase(line.Name, section);
    if (inside && line.Kind == LineKind::Key && EqualsIgnoreCase(line.Name, key)) return &line;
  }
  return nullptr;
}

std::optional<String> ProjectText::KeyValue(StringView section, StringView key) const {
  const Line* line = FindKey(section, key);
  return line ? std::optional(line->Value) : std::nullopt;
}

std::optional<String> ProjectText::LiteralValue(StringView section, StringView key) const {
  const Line* line = FindKey(section, key);
  if (!line) return {};
  return String(WithoutBlanks(StringView(line->Text).substr(line->Text.find(u'=') + 1)));
}

void ProjectText::Insert(std::size_t position, String text) {
  if (position > 0 && lines_[position - 1].End.empty()) lines_[position - 1].End = lineEnd_;
  lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(position), Read(std::move(text), lineEnd_));
}

void ProjectText::SetKey(StringView section, StringView key, StringView value) {
  const String escaped = Escape(value, {});
  if (const Line* found = FindKey(section, key)) {
    Line& line = lines_[static_cast<std::size_t>(found - lines_.data())];
    std::size_t start = line.Text.find(u'=') + 1;
    while (start < line.Text.size() && IsBlank(line.Text[start])) ++start;
    line = Read(line.Text.substr(0, start) + escaped, std::move(line.End));
    return;
  }
  if (!HasSection(section)) {
    if (!WithoutBlanks(lines_.back().Text).empty()) Insert(lines_.size(), {});
    Insert(lines_.size(), String(u"[").append(Escape(section, u"]")).append(u"]"));
  }
  Insert(EndOfSection(FindSection(section)), Escape(key, u"=[;#") + u"=" + escaped);
}

void ProjectText::RemoveSection(StringView section) {
  for (std::size_t header; (header = FindSection(section)) < lines_.size();) {
    const auto begin = lines_.begin() + static_cast<std::ptrdiff_t>(header);
    lines_.erase(begin, lines_.begin() + static_cast<std::ptrdiff_t>(EndOfSection(header)));
  }
}

}  // namespace Runtime
