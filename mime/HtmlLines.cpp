#include "mime/HtmlLines.h"

#include <utility>

namespace Mime {
namespace {

// Invisible characters, such as those that allow a line break.
bool IsInvisible(char16_t c) {
  return c == 0xAD || c == 0x34F || c == 0x200B || c == 0x2060 || c == 0xFEFF;
}

bool IsBlank(char16_t c) {
  return c == u' ' || c == u'\t';
}

}  // namespace

void HtmlLines::Put(char16_t c) {
  BeginLine();
  atMark_ = false;
  if (IsInvisible(c)) return;
  if (blankPending_ && !text_.empty() && text_.back() != u'\n') text_ += u' ';
  blankPending_ = false;
  text_ += c == 0xA0 ? u' ' : c;
}

void HtmlLines::BreakLine() {
  BeginLine();
  atMark_ = false;
  EndLine();
}

void HtmlLines::EndLine() {
  if (atMark_) return;
  blankPending_ = false;
  if (!lineOpen_) return;
  lineOpen_ = false;
  CutBlanks();
  if (!text_.empty()) text_ += u'\n';
}

void HtmlLines::PutMark(StringView mark) {
  const bool fits = text_.size() + mark.size() + 2 < limit_;
  for (const char16_t c : fits ? mark : StringView(u"*")) Put(c);
  Blank();
  atMark_ = true;
}

void HtmlLines::PutBehind(StringView text) {
  const std::size_t end = text_.find_last_not_of(u'\n') + 1;
  const String lineEnds = text_.substr(end);
  const bool emptyLineWaits = std::exchange(emptyLinePending_, false);
  text_.resize(end);
  Blank();
  for (const char16_t c : text) Put(c);
  if (lineEnds.empty()) return;
  text_ += lineEnds;
  lineOpen_ = false;
  emptyLinePending_ = emptyLineWaits;
}

String HtmlLines::Take() {
  while (!text_.empty() && (text_.back() == u'\n' || IsBlank(text_.back()))) text_.pop_back();
  return std::move(text_);
}

void HtmlLines::BeginLine() {
  if (emptyLinePending_ && !text_.empty() && !text_.ends_with(u"\n\n")) text_ += u'\n';
  emptyLinePending_ = false;
  lineOpen_ = true;
}

void HtmlLines::CutBlanks() {
  while (!text_.empty() && IsBlank(text_.back())) text_.pop_back();
}

}  // namespace Mime
