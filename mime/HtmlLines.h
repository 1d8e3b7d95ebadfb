// HtmlLines: builds the lines of text while an HTML document is read.
#pragma once

#include <algorithm>

#include "platform/Text.h"

namespace Mime {

using Platform::String;
using Platform::StringView;

// Collects characters, blanks and line ends. Lines have no blanks at their ends, the text has neither blanks
// nor line ends at its ends, and markup gives at most one consecutive blank or empty line.
class HtmlLines {
 public:
  // limit is the largest number of characters; room for them is reserved at once.
  explicit HtmlLines(std::size_t limit) : limit_(limit) { text_.reserve(limit); }

  void Put(char16_t c);                               // not for line ends and collapsible blanks
  void Blank() { blankPending_ = true; }              // a blank, if the line has text before and after it
  void BreakLine();                                   // ends the line, even if it is empty
  void EndLine();                                     // ends the line if it has text
  void EmptyLine() { emptyLinePending_ = !atMark_; }  // an empty line before the next text

  // Puts the mark of a list item. The item's first block begins on the same line: EndLine and EmptyLine have
  // no effect until text follows, or until EndMark. A mark for which the limit is too small becomes "*".
  void PutMark(StringView mark);
  void EndMark() { atMark_ = false; }

  // Appends a blank and the text to the last line that has text.
  void PutBehind(StringView text);

  std::size_t Size() const { return text_.size(); }

  // The text that was put after a position returned by Size. At a line end, blanks in front of the position
  // may have been removed.
  StringView From(std::size_t position) const {
    return StringView(text_).substr(std::min(position, text_.size()));
  }

  // Returns the whole text. To be called once.
  String Take();

 private:
  void BeginLine();
  void CutBlanks();

  String text_;
  std::size_t limit_;
  bool lineOpen_ = false;  // the line has characters, which may be invisible
  bool blankPending_ = false;
  bool emptyLinePending_ = false;
  bool atMark_ = false;
};

}  // namespace Mime
